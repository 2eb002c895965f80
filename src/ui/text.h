// Texts of ours and of others, as the toolkit takes them and as they fit into a line.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tessellon {

/// Text in UTF-8 for the toolkit.
QString toQString(std::string_view text);

/// A text of the user's or of another program as it can be shown in one line, without characters
/// that do not show. The end of one that is longer than any line is left out.
QString singleLine(const QString& text);
QString singleLine(std::string_view text);

/// A single line for the middle of a sentence of ours: whatever its direction of writing, the words
/// around it keep their places (Unicode Standard Annex 9, isolates).
QString isolated(const QString& line);

}  // namespace tessellon
