#include "platform/linux/ColourScheme.h"

#include "support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QTest>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString settings = u"org.freedesktop.portal.Settings"_s;
const QString appearance = u"org.freedesktop.appearance"_s;
const QString colourScheme = u"color-scheme"_s;
constexpr uint none = 0;
constexpr uint dark = 1;
constexpr uint light = 2;

}

/// A desktop's settings; the names of its members are those of the interface.
class ScriptedPortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    ScriptedPortal(const QString& address, QVariant wish)
        : m_wish{std::move(wish)}
        , m_bus{QDBusConnection::connectToBus(address, u"portal"_s)} {
        m_bus.registerObject(path, this, QDBusConnection::ExportAllContents);
        m_bus.registerService(u"org.freedesktop.portal.Desktop"_s);
    }
    ~ScriptedPortal() override { QDBusConnection::disconnectFromBus(u"portal"_s); }

    /// Tells of a change; what is told may be wrong, what is asked is right.
    void tell(const QVariant& wish, const QString& key = colourScheme) {
        if (key == colourScheme) {
            m_wish = wish;
        }
        auto news = QDBusMessage::createSignal(path, settings, u"SettingChanged"_s);
        news << appearance << key << QVariant::fromValue(QDBusVariant{none});
        m_bus.send(news);
    }

public slots:
    QDBusVariant Read(const QString& section, const QString& key) { // NOLINT(readability-identifier-naming)
        ++questions;
        return QDBusVariant{section == appearance && key == colourScheme ? QVariant::fromValue(QDBusVariant{m_wish})
                                                                         : QVariant{u"?"_s}};
    }

public:
    int questions = 0;

private:
    QVariant m_wish;
    QDBusConnection m_bus;
};

class TestColourScheme final : public QObject {
    Q_OBJECT

public:
    explicit TestColourScheme(QString address)
        : m_address{std::move(address)} {}

private slots:
    void initTestCase() {
        if (m_address.isEmpty()) {
            QSKIP("there is no dbus-daemon");
        }
        QVERIFY2(!isDark(), "the toolkit's own palette is light here");
    }
    void cleanup() {
        m_scheme.reset();
        m_portal.reset();
        QGuiApplication::setPalette({});
    }

    void paletteIsAsTheDesktopWishes() {
        for (const auto& [wish, expected] : {std::pair{dark, true}, {light, false}, {none, false}, {7u, false}}) {
            m_portal = std::make_unique<ScriptedPortal>(m_address, wish);
            m_scheme = std::make_unique<ColourScheme>(nullptr);
            QTRY_COMPARE(m_portal->questions, 1);
            QTRY_COMPARE(isDark(), expected);
            cleanup();
        }
    }

    void paletteFollowsWhenTheUserChangesTheirMind() {
        start(light);
        const QPalette own = QGuiApplication::palette();
        for (int round = 0; round < 3; ++round) {
            m_portal->tell(dark);
            QTRY_VERIFY(isDark());
            QCOMPARE(QGuiApplication::palette().color(QPalette::Highlight), own.color(QPalette::Highlight));
            m_portal->tell(round == 1 ? none : light);
            QTRY_VERIFY(!isDark());
            QCOMPARE(QGuiApplication::palette(), own);
        }
    }

    void everyColourOfADarkPaletteCanBeRead() {
        start(light);
        m_portal->tell(dark);
        QTRY_VERIFY(isDark());
        const QPalette palette = QGuiApplication::palette();
        for (const auto& [text, ground] : {std::pair{QPalette::WindowText, QPalette::Window},
                                           {QPalette::Text, QPalette::Base},
                                           {QPalette::ButtonText, QPalette::Button},
                                           {QPalette::Link, QPalette::Window},
                                           {QPalette::PlaceholderText, QPalette::Base},
                                           {QPalette::ToolTipText, QPalette::ToolTipBase}}) {
            QVERIFY2(palette.color(text).lightness() - palette.color(ground).lightness() > 100,
                     qPrintable(QString::number(text)));
        }
    }

    void whatMakesNoSenseIsLeftAlone() {
        start(light);
        const QPalette own = QGuiApplication::palette();
        for (const QVariant& wish : {QVariant{u"dark"_s}, QVariant{-1}, QVariant{QStringList{u"1"_s}}}) {
            const int before = m_portal->questions;
            m_portal->tell(wish);
            QTRY_COMPARE(m_portal->questions, before + 1);
            QTest::qWait(20);
            QCOMPARE(QGuiApplication::palette(), own);
        }
    }

    void onlyNewsOfLightAndDarkAreAskedFor() {
        start(light);
        for (int round = 0; round < 5; ++round) {
            m_portal->tell(dark, u"contrast"_s);
            m_portal->tell(light);
        }
        QTRY_VERIFY(m_portal->questions >= 6);
        QTest::qWait(50);
        QCOMPARE(m_portal->questions, 6);
    }

    void paletteThatAgreesIsLeftAlone() {
        const QPalette bright{QColor{u"#e0d0e0"_s}, QColor{u"#ffeeff"_s}};
        const QPalette gloomy{QColor{u"#302030"_s}, QColor{u"#201020"_s}};
        QCOMPARE(ColourScheme::adapted(bright, light), bright);
        QCOMPARE(ColourScheme::adapted(gloomy, dark), gloomy);
        for (const uint wish : {none, 3u}) {
            QCOMPARE(ColourScheme::adapted(bright, wish), bright);
            QCOMPARE(ColourScheme::adapted(gloomy, wish), gloomy);
        }
        QVERIFY(ColourScheme::adapted(bright, dark).color(QPalette::Window).lightness() < 64);
        QVERIFY(ColourScheme::adapted(gloomy, light).color(QPalette::Window).lightness() > 192);
    }

    void noPortalIsNoWish() {
        m_scheme = std::make_unique<ColourScheme>(nullptr);
        QTest::qWait(20);
        QVERIFY(!isDark());
    }

    void aPortalThatStartsLateOrAnewIsAsked() {
        m_scheme = std::make_unique<ColourScheme>(nullptr);
        for (const uint wish : {dark, light, dark}) {
            m_portal.reset();
            m_portal = std::make_unique<ScriptedPortal>(m_address, QVariant{wish});
            QTRY_COMPARE(isDark(), wish == dark);
        }
        m_portal->tell(light);
        QTRY_VERIFY(!isDark());
    }

private:
    static bool isDark() { return QGuiApplication::palette().color(QPalette::Window).lightness() < 128; }

    void start(uint wish) {
        m_portal = std::make_unique<ScriptedPortal>(m_address, QVariant{wish});
        m_scheme = std::make_unique<ColourScheme>(nullptr);
        QTRY_COMPARE(m_portal->questions, 1);
        QTest::qWait(20);
    }

    const QString m_address;
    std::unique_ptr<ScriptedPortal> m_portal;
    std::unique_ptr<ColourScheme> m_scheme;
};

int main(int argc, char** argv) {
    const PrivateBus bus; // before anybody asks for one
    const QGuiApplication app{argc, argv};
    TestColourScheme test{bus.address()};
    return QTest::qExec(&test, argc, argv);
}

#include "TestColourScheme.moc"
