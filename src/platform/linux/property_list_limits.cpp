#include "platform/linux/property_list_limits.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace tessellon {
namespace {

constexpr std::string_view blanks = " \t\r\n";

/// Walks over the tags of the XML form. Whatever it cannot follow for certain it refuses, so that
/// its count of the levels is never below the parser's.
class XmlScan {
  public:
    explicit XmlScan(std::string_view text) : rest_(text) {}

    bool run() {
        while (true) {
            const auto start = rest_.find('<');
            if (!countText(rest_.substr(0, std::min(start, rest_.size())))) {
                return false;
            }
            if (start == std::string_view::npos) {
                return true;
            }
            rest_.remove_prefix(start);
            if (!markup()) {
                return false;
            }
        }
    }

  private:
    /// Replacing an entity moves the rest of its text, so the work is the product of the two.
    bool countText(std::string_view text) {
        constexpr std::size_t maxWork = 4'000'000'000;
        const auto entities = static_cast<std::size_t>(std::count(text.begin(), text.end(), '&'));
        work_ += entities * text.size();
        return work_ <= maxWork;
    }

    bool markup() {
        if (rest_.starts_with("<!--")) {
            // "<!-->" is read as a whole comment by some and as the start of one by others.
            return !rest_.starts_with("<!-->") && !rest_.starts_with("<!--->") &&
                   skipPast("-->", 4);
        }
        if (rest_.starts_with("<![CDATA[")) {
            return skipPast("]]>", 9);
        }
        if (rest_.starts_with("<?")) {
            return values_ == 0 && skipPast("?>", 2);
        }
        if (rest_.starts_with("<!")) {
            return values_ == 0 && declaration();
        }
        return tag();
    }

    bool declaration() {
        const auto end = rest_.find('>');
        if (end == std::string_view::npos || rest_.substr(0, end).find('[') < end) {
            return false;
        }
        rest_.remove_prefix(end + 1);
        return true;
    }

    bool tag() {
        const auto end = rest_.find('>');
        if (end == std::string_view::npos) {
            return false;
        }
        auto inside = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        const bool closes = inside.starts_with('/');
        if (closes) {
            inside.remove_prefix(1);
        }
        const bool isWhole = inside.ends_with('/');
        if (isWhole) {
            inside.remove_suffix(1);
        }
        const auto name = inside.substr(0, std::min(inside.find_first_of(blanks), inside.size()));
        if (name == "plist") {
            return closes || values_ == 0;
        }
        // Only the outermost tag has attributes; in those a '>' could hide.
        if (inside.find_first_not_of(blanks, name.size()) != std::string_view::npos) {
            return false;
        }
        if (closes) {
            if (isContainer(name)) {
                --depth_;
            }
            return depth_ >= 0;
        }
        if (isContainer(name) && !isWhole) {
            ++depth_;
        }
        return depth_ <= maxPropertyListDepth && ++values_ <= maxPropertyListValues;
    }

    static bool isContainer(std::string_view name) { return name == "dict" || name == "array"; }

    bool skipPast(std::string_view terminator, std::size_t from) {
        const auto end = rest_.find(terminator, from);
        if (end == std::string_view::npos) {
            return false;
        }
        rest_.remove_prefix(end + terminator.size());
        return true;
    }

    std::string_view rest_;
    std::size_t work_ = 0;
    std::size_t values_ = 0;
    int depth_ = 0;
};

/// Follows the references of the binary form as the parser does, without building anything. The
/// layout: objects, then a table of their offsets, then 32 bytes that say how to read both.
class BinaryScan {
  public:
    explicit BinaryScan(std::string_view bytes) : bytes_(bytes) {}

    bool run() {
        constexpr std::size_t trailerSize = 32;
        constexpr std::size_t magicSize = 8;
        if (bytes_.size() < magicSize + trailerSize) {
            return false;
        }
        const auto trailer = bytes_.size() - trailerSize;
        offsetSize_ = byteAt(trailer + 6);
        refSize_ = byteAt(trailer + 7);
        count_ = *number(trailer + 8, 8);
        const auto root = *number(trailer + 16, 8);
        table_ = *number(trailer + 24, 8);
        const bool sizesFit =
            offsetSize_ >= 1 && offsetSize_ <= 8 && refSize_ >= 1 && refSize_ <= 8;
        if (!sizesFit || table_ > trailer || count_ > (trailer - table_) / offsetSize_) {
            return false;
        }
        return follow(root, 1);
    }

  private:
    struct Length {
        std::size_t count = 0;
        std::size_t start = 0;  // of what is counted
    };

    std::uint8_t byteAt(std::size_t at) const { return static_cast<std::uint8_t>(bytes_[at]); }

    /// A big-endian number of at most 8 bytes.
    std::optional<std::uint64_t> number(std::size_t at, std::size_t size) const {
        if (at > bytes_.size() || size > bytes_.size() - at) {
            return std::nullopt;
        }
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            value = value << 8 | byteAt(at + i);
        }
        return value;
    }

    /// The low half of the marker, or, when that is all ones, the integer object that follows it.
    std::optional<Length> lengthAt(std::size_t at) const {
        const std::size_t low = byteAt(at) & 0x0F;
        if (low != 0x0F) {
            return Length{low, at + 1};
        }
        const auto marker = number(at + 1, 1);
        if (!marker || *marker >> 4 != 1 || (*marker & 0x0F) > 3) {
            return std::nullopt;
        }
        const auto size = std::size_t{1} << (*marker & 0x0F);
        const auto length = number(at + 2, size);
        if (!length || *length > bytes_.size()) {
            return std::nullopt;
        }
        return Length{*length, at + 2 + size};
    }

    bool follow(std::uint64_t object, int depth) {
        if (object >= count_ || depth > maxPropertyListDepth + 1 ||
            ++values_ > maxPropertyListValues) {
            return false;
        }
        const auto offset = number(table_ + object * offsetSize_, offsetSize_);
        if (!offset || *offset >= table_) {
            return false;
        }
        const auto at = static_cast<std::size_t>(*offset);
        const auto kind = byteAt(at) >> 4;
        const bool isText = kind >= 0x4 && kind <= 0x7;
        const bool isContainer = kind >= 0xA;
        if (!isText && !isContainer) {
            return true;
        }
        const auto length = lengthAt(at);
        if (!length) {
            return false;
        }
        if (isText) {
            copied_ += length->count;
            return copied_ <= 4 * maxPropertyListBytes;
        }
        const auto references = kind == 0xD ? 2 * length->count : length->count;
        for (std::size_t i = 0; i < references; ++i) {
            const auto child = number(length->start + i * refSize_, refSize_);
            if (!child || !follow(*child, depth + 1)) {
                return false;
            }
        }
        return true;
    }

    std::string_view bytes_;
    std::size_t offsetSize_ = 0;
    std::size_t refSize_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t table_ = 0;
    std::size_t values_ = 0;
    std::size_t copied_ = 0;
};

}  // namespace

bool isWithinPropertyListLimits(std::string_view bytes) {
    if (bytes.size() > maxPropertyListBytes) {
        return false;
    }
    return bytes.starts_with("bplist") ? BinaryScan(bytes).run() : XmlScan(bytes).run();
}

}  // namespace tessellon
