#include "settings/flow_view.h"

#include "settings/settings_view_fixture.h"

namespace tessellon {
namespace {

class FlowTest : public SettingsViewTest {
  protected:
    void add(const QSize& size) {
        auto* const item = new QWidget(&parent);
        item->setFixedSize(size);
        flow->addWidget(item);
        items.push_back(item);
    }
    QRect frame(std::size_t item) const { return items.at(item)->geometry(); }

    QWidget parent;
    Flow* flow = new Flow(8, &parent);
    std::vector<QWidget*> items;
};

TEST_F(FlowTest, WithoutItemsItHasNoSize) {
    EXPECT_EQ(flow->sizeHint(), QSize(0, 0));
    EXPECT_EQ(flow->heightForWidth(100), 0);
}

TEST_F(FlowTest, AnItemThatWouldPassTheWidthStartsALineAsHighAsTheTallest) {
    for (const auto& size : {QSize(60, 20), QSize(32, 30), QSize(50, 20), QSize(300, 10)}) {
        add(size);
    }
    flow->setSizeConstraint(QLayout::SetNoConstraint);
    show(parent, {100, 200});
    EXPECT_EQ(frame(0), QRect(0, 0, 60, 20));
    EXPECT_EQ(frame(1), QRect(68, 0, 32, 30)) << "it ends at the width exactly";
    EXPECT_EQ(frame(2), QRect(0, 38, 50, 20));
    EXPECT_EQ(frame(3), QRect(0, 66, 300, 10)) << "alone, and as wide as it wants to be";
    EXPECT_EQ(flow->heightForWidth(100), 76);
    EXPECT_EQ(flow->heightForWidth(89), 104) << "a line for each";
    EXPECT_EQ(flow->sizeHint(), QSize(60 + 32 + 50 + 300 + 3 * 8, 10))
        << "on one line, down to the end of the last";

    items[1]->hide();
    EXPECT_EQ(flow->heightForWidth(118), 38) << "what is hidden takes no room";
}

}  // namespace
}  // namespace tessellon
