#include "platform/linux/ColourScheme.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr auto portal = "org.freedesktop.portal.Desktop"_L1;
constexpr auto path = "/org/freedesktop/portal/desktop"_L1;
constexpr auto interface = "org.freedesktop.portal.Settings"_L1;
constexpr auto appearance = "org.freedesktop.appearance"_L1;
constexpr auto colourScheme = "color-scheme"_L1;

enum Wish : uint { dark = 1, light = 2 };

/// Some portals wrap their answer twice.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

struct Tone final {
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
};

constexpr std::array tones{
    Tone{QPalette::ToolTipBase, 0xffffffff, 0xff2c2c2c},
    Tone{QPalette::ToolTipText, 0xff1d1d1d, 0xfff2f2f2},
    Tone{QPalette::Base, 0xffffffff, 0xff1e1e1e},
    Tone{QPalette::AlternateBase, 0xfff5f5f5, 0xff2a2a2a},
    Tone{QPalette::PlaceholderText, 0xff6b6b6b, 0xffa0a0a0},
    Tone{QPalette::Link, 0xff1a5fb4, 0xff78aeed},
};

/// The toolkit's palette in the other tone: its accent stays.
QPalette inverted(const QPalette& own, bool toDark) {
    QPalette result{QColor::fromRgb(toDark ? 0xff3c3c3c : 0xffe8e8e8),
                    QColor::fromRgb(toDark ? 0xff2b2b2b : 0xfff2f2f2)};
    for (const auto& [role, lightTone, darkTone] : tones) {
        result.setColor(role, QColor::fromRgb(toDark ? darkTone : lightTone));
    }
    for (const auto role : {QPalette::Highlight, QPalette::HighlightedText}) {
        result.setColor(role, own.color(role));
    }
    return result;
}

}

ColourScheme::ColourScheme(QObject* parent)
    : QObject{parent}
    , m_portal{portal, m_bus, QDBusServiceWatcher::WatchForRegistration} {
    connect(&m_portal, &QDBusServiceWatcher::serviceRegistered, this, &ColourScheme::ask);
    m_bus.connect(portal, path, interface, u"SettingChanged"_s, {appearance, colourScheme}, {}, this, SLOT(ask()));
    ask();
}

// What is told of a change may come from another part of the desktop than the one that is to be believed.
void ColourScheme::ask() {
    auto question = QDBusMessage::createMethodCall(portal, path, interface, u"Read"_s);
    question << appearance << colourScheme;
    auto* answer = new QDBusPendingCallWatcher{m_bus.asyncCall(question), this};
    connect(answer, &QDBusPendingCallWatcher::finished, this, [](QDBusPendingCallWatcher* watcher) {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (!reply.isError()) {
            follow(unwrapped(reply.value().variant()).toUInt());
        }
        watcher->deleteLater();
    });
}

void ColourScheme::follow(uint wish) {
    QGuiApplication::setPalette({}); // the toolkit's
    const QPalette own = QGuiApplication::palette();
    if (const QPalette result = adapted(own, wish); result != own) {
        QGuiApplication::setPalette(result);
    }
}

QPalette ColourScheme::adapted(const QPalette& own, uint wish) {
    const bool isAgainst = (wish == dark && !isDark(own)) || (wish == light && isDark(own));
    return isAgainst ? inverted(own, wish == dark) : own;
}

#include "moc_ColourScheme.cpp"
