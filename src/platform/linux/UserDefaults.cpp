#include "platform/UserDefaults.h"

#include <QDir>
#include <QMap>
#include <QSettings>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

const QString trueText = u"true"_s;
const QString falseText = u"false"_s;
const QString general = u"[General]"_s;

QString settingsFile() {
    const QString configured = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString folder = QDir::isAbsolutePath(configured) ? configured : QDir::homePath() + u"/.config"_s;
    return folder + u"/vorna/companion.conf"_s;
}

// What Qt's own format would make of a damaged file can be of any type and size, and too large a list ends the program.

/// Each line is a key and a text; `[General]` is what stands above the keys that are in no section.
bool readLines(QIODevice& file, QSettings::SettingsMap& values) {
    QString section;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        const qsizetype equals = line.indexOf(u'=');
        if (line.startsWith(u'[') && line.endsWith(u']')) {
            section = line == general ? QString{} : line.sliced(1).chopped(1) + u'/';
        } else if (equals > 0) {
            values.insert(section + line.first(equals).trimmed(), line.sliced(equals + 1).trimmed());
        }
    }
    return true;
}

bool writeLines(QIODevice& file, const QSettings::SettingsMap& values) {
    QMap<QString, QString> sections;
    for (const auto& [key, value] : values.asKeyValueRange()) {
        const qsizetype name = key.lastIndexOf(u'/') + 1;
        sections[key.first(name)] += key.sliced(name) + u'=' + value.toString() + u'\n';
    }
    QByteArray text;
    for (const auto& [section, lines] : sections.asKeyValueRange()) {
        text += (section.isEmpty() ? general : QString{u"["_s + section.chopped(1) + u"]"_s}).toUtf8() + "\n" +
                lines.toUtf8();
    }
    return file.write(text) == text.size();
}

QSettings::Format linesFormat() {
    static const auto format = QSettings::registerFormat(u"conf"_s, readLines, writeLines);
    return format;
}

class SettingsFileDefaults final : public UserDefaults {
public:
    bool boolean(const QString& key) const override { return string(key) == trueText; }

    std::optional<QString> string(const QString& key) const override {
        return m_settings.contains(key) ? std::optional{m_settings.value(key).toString()} : std::nullopt;
    }

    void setBoolean(const QString& key, bool value) override { setString(key, value ? trueText : falseText); }
    void setString(const QString& key, const QString& value) override { m_settings.setValue(key, value); }
    void remove(const QString& key) override { m_settings.remove(key); }

private:
    QSettings m_settings{settingsFile(), linesFormat()};
};

}

std::unique_ptr<UserDefaults> UserDefaults::standard() {
    return std::make_unique<SettingsFileDefaults>();
}
