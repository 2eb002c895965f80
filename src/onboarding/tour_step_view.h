// What the steps of the tour have in common: a header above whatever there is to do.
#pragma once

#include "onboarding/onboarding_model.h"
#include "ui/text_label.h"

#include <QString>
#include <QVBoxLayout>
#include <QWidget>

namespace tessellon {

class TourStep : public QWidget {
  public:
    /// Shows the model as it is now.
    virtual void refresh() {}

    /// The control to begin with while the tour cannot go on; null when there is none.
    virtual QWidget* firstControl() const { return nullptr; }

    /// The step as assistive technology announces it, such as "Step 2 of 4: …".
    QString heading() const { return heading_; }
    /// The sentences below the title.
    QString text() const { return text_; }

  protected:
    /// The model must outlive the step.
    TourStep(OnboardingModel& model, QWidget* parent);

    /// The label, the title and the text, in this order below what has been added before.
    void addHeader(const QString& title, const QString& text);

    OnboardingModel& model() const { return model_; }
    QVBoxLayout& column() const { return *column_; }

  private:
    OnboardingModel& model_;
    QVBoxLayout* column_;
    QString heading_;
    QString text_;
};

}  // namespace tessellon
