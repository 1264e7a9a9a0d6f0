#pragma once

#include "platform/UserDefaults.h"

#include <QStringList>
#include <QVariantMap>

/// User defaults that live as long as the test.
class MemoryDefaults final : public UserDefaults {
public:
    QVariantMap values;
    QStringList writes; ///< in order

    [[nodiscard]] bool boolean(const QString& key) const override { return values.value(key).toBool(); }
    [[nodiscard]] std::optional<QString> string(const QString& key) const override {
        return values.contains(key) ? std::optional{values.value(key).toString()} : std::nullopt;
    }
    void setBoolean(const QString& key, bool value) override { write(key, value); }
    void setString(const QString& key, const QString& value) override { write(key, value); }
    void remove(const QString& key) override {
        values.remove(key);
        writes.append(key + QStringLiteral(" removed"));
    }

private:
    void write(const QString& key, const QVariant& value) {
        values.insert(key, value);
        writes.append(key + QStringLiteral(" = ") + value.toString());
    }
};
