#include "platform/UserDefaults.h"

#include <QDir>
#include <QSettings>
#include <QStandardPaths>

#include <new>

using namespace Qt::StringLiterals;

namespace {

const QString trueText = u"true"_s;
const QString falseText = u"false"_s;

QString settingsFile() {
    const QString configured = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString folder = QDir::isAbsolutePath(configured) ? configured : QDir::homePath() + u"/.config"_s;
    return folder + u"/vorna/companion.conf"_s;
}

class SettingsFileDefaults final : public UserDefaults {
public:
    bool boolean(const QString& key) const override { return string(key) == trueText; }

    std::optional<QString> string(const QString& key) const override {
        try {
            const QVariant value = m_settings.value(key);
            return value.typeId() == QMetaType::QString ? std::optional{value.toString()} : std::nullopt;
        } catch (const std::bad_alloc&) { // an encoded list that is said to be larger than any memory
            return std::nullopt;
        }
    }

    // As a text: the file says the same, and an encoded value of another type can never pass for a truth value.
    void setBoolean(const QString& key, bool value) override { setString(key, value ? trueText : falseText); }
    void setString(const QString& key, const QString& value) override { m_settings.setValue(key, value); }
    void remove(const QString& key) override { m_settings.remove(key); }

private:
    QSettings m_settings{settingsFile(), QSettings::IniFormat};
};

}

std::unique_ptr<UserDefaults> UserDefaults::standard() {
    return std::make_unique<SettingsFileDefaults>();
}
