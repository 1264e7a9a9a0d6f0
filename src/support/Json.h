#pragma once

#include <QByteArrayView>
#include <QString>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// One value of a JSON document.
struct Json final {
    struct Member;
    using List = std::vector<Json>;
    using Object = std::vector<Member>; ///< in document order, repeated keys included

    /// How deep lists and objects may be nested.
    static constexpr std::size_t maxDepth = 512;

    /// A whole number that does not fit into 64 bits is a double.
    std::variant<std::nullptr_t, bool, qint64, double, QString, List, Object> value;

    /// Reads UTF-8 text as RFC 8259 defines it; a byte order mark in front is skipped. Nothing when it is anything
    /// else, nests too deep, or has a number that is too large for a double; one that is too small is 0. For any
    /// thread.
    [[nodiscard]] static std::optional<Json> parse(QByteArrayView text);

    /// The value if it is of this type, else nothing.
    template <typename T>
    [[nodiscard]] const T* as() const {
        return std::get_if<T>(&value);
    }

    /// The member of an object, the last one of that key; nothing when there is none, or this is no object.
    [[nodiscard]] const Json* member(std::string_view key) const;
};

struct Json::Member final {
    std::string key;
    Json value;
};
