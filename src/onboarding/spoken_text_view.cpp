#include "onboarding/spoken_text_view.h"

#include "ui/key_chips.h"

namespace tessellon {

QString spokenText(const QString& text) {
    QString spoken;
    bool afterKey = false;
    for (const auto& sign : onePerCharacter(text)) {
        const auto name = spokenKeys({sign});
        const bool isKey = name != sign;
        const auto follows = sign.front().isLetterOrNumber();
        if (!spoken.isEmpty() && !spoken.back().isSpace() && (isKey || (afterKey && follows))) {
            spoken += QLatin1Char(' ');
        }
        spoken += name;
        afterKey = isKey;
    }
    return spoken;
}

}  // namespace tessellon
