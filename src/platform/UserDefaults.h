#pragma once

#include <QString>

#include <memory>
#include <optional>

/// The user's stored settings. Writes take effect at once for later reads; whether they reach the disk is not
/// reported. Main thread only.
class UserDefaults {
public:
    UserDefaults() = default;
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;
    virtual ~UserDefaults() = default;

    /// The platform's own: `$XDG_CONFIG_HOME/vorna/companion.conf` on Linux, the standard user defaults on macOS.
    [[nodiscard]] static std::unique_ptr<UserDefaults> standard();

    /// False when the key is missing or does not hold a truth value.
    [[nodiscard]] virtual bool boolean(const QString& key) const = 0;
    [[nodiscard]] virtual std::optional<QString> string(const QString& key) const = 0;

    virtual void setBoolean(const QString& key, bool value) = 0;
    virtual void setString(const QString& key, const QString& value) = 0;
    virtual void remove(const QString& key) = 0;
};
