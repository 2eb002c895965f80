#include "base/uuid.h"

#include <cstring>

#include <uuid/uuid.h>

namespace tessellon {

Uuid Uuid::random() {
    Uuid id;
    uuid_generate_random(id.bytes_.data());
    return id;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    Uuid id;
    if (text.size() != 36 ||
        uuid_parse_range(text.data(), text.data() + text.size(), id.bytes_.data()) != 0) {
        return std::nullopt;
    }
    return id;
}

Uuid Uuid::fromName(std::string_view name) {
    Uuid id;
    uuid_generate_sha1(id.bytes_.data(), *uuid_get_template("oid"), name.data(), name.size());
    return id;
}

std::string Uuid::toString() const {
    std::array<char, UUID_STR_LEN> text{};
    uuid_unparse_upper(bytes_.data(), text.data());
    return text.data();
}

}  // namespace tessellon

std::size_t std::hash<tessellon::Uuid>::operator()(const tessellon::Uuid& id) const noexcept {
    std::size_t value = 0;
    std::memcpy(&value, id.bytes_.data(), sizeof value);
    return value;
}
