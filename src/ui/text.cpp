#include "ui/text.h"

#include "base/text.h"

namespace tessellon {
namespace {

// Far more than fits into any line. Measuring a text takes time for each character.
constexpr qsizetype longestLine = 300;

// In bytes: no more of a text is looked at, however long it is.
constexpr std::size_t longestText = 16 * longestLine;

// FIRST STRONG ISOLATE and POP DIRECTIONAL ISOLATE, which do not show.
constexpr QChar isolateStart(0x2068);
constexpr QChar isolateEnd(0x2069);

}  // namespace

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString singleLine(std::string_view text) {
    // A character that is cut in two is none, and goes with what does not show.
    auto line = toQString(plainText(text.substr(0, longestText))).simplified();
    if (line.size() > longestLine) {
        line.truncate(line[longestLine - 1].isHighSurrogate() ? longestLine - 1 : longestLine);
        line.append(QChar(0x2026));
    }
    return line;
}

QString singleLine(const QString& text) {
    return singleLine(std::string_view(text.toStdString()));
}

QString isolated(const QString& line) {
    return line.isEmpty() ? line : isolateStart + line + isolateEnd;
}

}  // namespace tessellon
