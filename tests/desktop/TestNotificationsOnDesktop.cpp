#include "system/NotificationService.h"

#include "support/PrivateBus.h"

#include <QCoro/QCoroTask>

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMs = 10'000;

QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(patienceMs);
    return process.readAllStandardOutput();
}

int displayed() {
    return outputOf(u"dunstctl"_s, {u"count"_s, u"displayed"_s}).trimmed().toInt();
}

/// What the daemon keeps of the notifications that were closed, newest first.
QList<QJsonObject> history() {
    QList<QJsonObject> entries;
    const auto answer = QJsonDocument::fromJson(outputOf(u"dunstctl"_s, {u"history"_s})).object();
    for (const auto& entry : answer.value(u"data"_s).toArray().first().toArray()) {
        entries.append(entry.toObject());
    }
    return entries;
}

QString field(const QJsonObject& entry, const QString& name) {
    return entry.value(name).toObject().value(u"data"_s).toVariant().toString();
}

}

/// The companion's notifications as a real daemon takes and shows them, on a screen that nobody sees.
class TestNotificationsOnDesktop final : public QObject {
    Q_OBJECT

public:
    explicit TestNotificationsOnDesktop(QString bus)
        : m_bus{std::move(bus)} {}

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init() {
        outputOf(u"dunstctl"_s, {u"close-all"_s});
        QTRY_COMPARE_WITH_TIMEOUT(displayed(), 0, patienceMs);
    }

    void daemonIsAuthorized();
    void notificationArrivesAsItWasPosted();
    void markupIsShownAsTyped();
    void equalNotificationsAreBothShown();

private:
    void post(const QString& title, const QString& body) {
        QCoro::waitFor(m_service->notify(title, body, NotificationService::freshIdentifier()));
    }

    QString m_bus;
    QTemporaryDir m_directory;
    QProcess m_screen;
    QProcess m_daemon;
    std::unique_ptr<NotificationCenter> m_center;
    std::unique_ptr<NotificationService> m_service;
};

void TestNotificationsOnDesktop::initTestCase() {
    for (const QString& program : {u"dbus-daemon"_s, u"Xvfb"_s, u"dunst"_s, u"dunstctl"_s}) {
        if (QStandardPaths::findExecutable(program).isEmpty()) {
            QSKIP(qPrintable(u"there is no "_s + program));
        }
    }
    QVERIFY(!m_bus.isEmpty());
    m_screen.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
    QVERIFY(m_screen.waitForReadyRead(patienceMs));
    qputenv("DISPLAY", ":" + m_screen.readLine().trimmed());

    QFile configuration{m_directory.filePath(u"dunstrc"_s)};
    QVERIFY(configuration.open(QIODevice::WriteOnly));
    configuration.write("[global]\nstack_duplicates = false\nmarkup = full\nformat = \"%s\\n%b\"\n");
    configuration.close();
    m_daemon.start(u"dunst"_s, {u"-conf"_s, configuration.fileName()});
    QVERIFY(m_daemon.waitForStarted(patienceMs));

    m_center = NotificationCenter::standard();
    m_service = std::make_unique<NotificationService>(*m_center);
    QTRY_COMPARE_WITH_TIMEOUT(QCoro::waitFor(m_service->authorizationStatus()),
                              NotificationService::Authorization::authorized, patienceMs);
}

void TestNotificationsOnDesktop::cleanupTestCase() {
    for (QProcess* process : {&m_daemon, &m_screen}) {
        process->terminate();
        process->waitForFinished();
    }
}

void TestNotificationsOnDesktop::daemonIsAuthorized() {
    QVERIFY(QCoro::waitFor(m_service->requestAuthorization()));
}

void TestNotificationsOnDesktop::notificationArrivesAsItWasPosted() {
    post(u"Desk backup"_s, u"3 files · done"_s);
    QTRY_COMPARE_WITH_TIMEOUT(displayed(), 1, patienceMs);
    outputOf(u"dunstctl"_s, {u"close-all"_s});
    QTRY_COMPARE_WITH_TIMEOUT(displayed(), 0, patienceMs);
    const QJsonObject entry = history().value(0);
    QCOMPARE(field(entry, u"appname"_s), u"vorna"_s);
    QCOMPARE(field(entry, u"summary"_s), u"Desk backup"_s);
    QCOMPARE(field(entry, u"body"_s), u"3 files · done"_s);
}

void TestNotificationsOnDesktop::markupIsShownAsTyped() {
    post(u"vorna sign in"_s, u"Failed: <b>R&D</b> said &amp;"_s);
    QTRY_COMPARE_WITH_TIMEOUT(displayed(), 1, patienceMs);
    outputOf(u"dunstctl"_s, {u"close-all"_s});
    QTRY_COMPARE_WITH_TIMEOUT(displayed(), 0, patienceMs);
    const QJsonObject entry = history().value(0);
    QCOMPARE(field(entry, u"body"_s), u"Failed: &lt;b&gt;R&amp;D&lt;/b&gt; said &amp;amp;"_s);
}

void TestNotificationsOnDesktop::equalNotificationsAreBothShown() {
    post(u"same"_s, u"same"_s);
    post(u"same"_s, u"same"_s);
    QTRY_COMPARE_WITH_TIMEOUT(displayed(), 2, patienceMs);
}

int main(int argc, char** argv) {
    const QCoreApplication app{argc, argv};
    const PrivateBus bus;
    TestNotificationsOnDesktop test{bus.address()};
    return QTest::qExec(&test, argc, argv);
}

#include "TestNotificationsOnDesktop.moc"
