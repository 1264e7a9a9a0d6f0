#include "support/Json.h"

#include <nlohmann/json.hpp>

#include <QStringDecoder>

#include <algorithm>
#include <utility>

namespace {

/// Puts the document together from what the parser reports; answers false to end it.
class Builder final : public nlohmann::json_sax<nlohmann::json> {
public:
    Json root;

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(qint64{value}); }
    bool number_unsigned(number_unsigned_t value) override {
        return std::in_range<qint64>(value) ? add(static_cast<qint64>(value)) : add(static_cast<double>(value));
    }
    bool number_float(number_float_t value, const string_t& /*text*/) override { return add(value); }
    bool string(string_t& value) override { return add(QString{m_decoder(QByteArrayView{value})}); }
    bool binary(binary_t& /*value*/) override { return false; }
    bool key(string_t& value) override {
        std::get<Json::Object>(m_open.back()->value).push_back({std::move(value), {}});
        return true;
    }
    bool start_object(std::size_t /*size*/) override { return open<Json::Object>(); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t /*size*/) override { return open<Json::List>(); }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t /*at*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        return false;
    }

private:
    template <typename T>
    bool add(T value) {
        place().value = std::move(value);
        return true;
    }

    template <typename T>
    bool open() {
        Json& here = place();
        here.value.emplace<T>().reserve(4);
        m_open.push_back(&here);
        return m_open.size() <= Json::maxDepth;
    }

    bool close() {
        m_open.pop_back();
        return true;
    }

    /// Where the next value goes. What is open does not move: only the innermost grows.
    Json& place() {
        if (m_open.empty()) {
            return root;
        }
        auto* list = std::get_if<Json::List>(&m_open.back()->value);
        return list != nullptr ? list->emplace_back() : std::get<Json::Object>(m_open.back()->value).back().value;
    }

    QStringDecoder m_decoder{QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom};
    std::vector<Json*> m_open;
};

}

std::optional<Json> Json::parse(QByteArrayView text) {
    Builder builder;
    const bool endsEarly = text.contains('\0'); // which the parser takes for the end
    return !endsEarly && nlohmann::json::sax_parse(text.begin(), text.end(), &builder)
               ? std::optional{std::move(builder.root)}
               : std::nullopt;
}

const Json* Json::member(std::string_view key) const {
    const auto* object = as<Object>();
    if (object == nullptr) {
        return nullptr;
    }
    const auto found =
        std::find_if(object->rbegin(), object->rend(), [&](const auto& member) { return member.key == key; });
    return found == object->rend() ? nullptr : &found->value;
}
