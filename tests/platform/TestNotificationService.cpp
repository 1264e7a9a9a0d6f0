#include "platform/NotificationService.h"

#include "support/PrivateBus.h"
#include "support/ScriptedNotificationServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

#include <cstdio>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using Authorization = NotificationService::Authorization;
using Manner = ScriptedNotificationServer::Manner;

namespace {

constexpr int answerLimit = 20'000;

const QString identifier = u"D9428888-122B-11E1-B85C-61CD3CBB3210"_s;

}

class TestNotificationService final : public QObject {
    Q_OBJECT

public:
    explicit TestNotificationService(QString address)
        : m_address{std::move(address)} {}

private slots:
    void initTestCase() {
        if (m_address.isEmpty()) {
            QSKIP("there is no dbus-daemon");
        }
    }
    void init() {
        m_service = NotificationService::standard();
        m_done = 0;
    }
    void cleanup() {
        m_service.reset();
        m_server.reset();
    }

    void identifiersAreRandomUpperCaseUuids() {
        static const QRegularExpression form{
            u"^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"_s};
        const QString fresh = NotificationService::freshIdentifier();
        QVERIFY2(form.match(fresh).hasMatch(), qPrintable(fresh));
        QCOMPARE_NE(NotificationService::freshIdentifier(), fresh);
    }

    void postsEveryFieldAsTheDesktopExpectsIt() {
        serve();
        post(u"Desk backup"_s, u"3 files · done"_s);
        QTRY_COMPARE(m_done, 1);
        QCOMPARE(m_server->notifications.size(), 1);
        const auto& posted = m_server->notifications.first();
        QCOMPARE(posted.application, u"vorna"_s);
        QCOMPARE(posted.icon, u"vorna-companion"_s);
        QCOMPARE(posted.title, u"Desk backup"_s);
        QCOMPARE(posted.body, u"3 files · done"_s);
        QCOMPARE(posted.actions, QStringList{});
        QCOMPARE(posted.hints, (QVariantMap{{u"desktop-entry"_s, u"vorna-companion"_s},
                                            {u"sound-name"_s, u"message-new-instant"_s}}));
        QCOMPARE(posted.expires, -1);
    }

    void escapesMarkupOnlyWhereTheServerReadsIt() {
        for (const auto& capabilities : {QStringList{u"body"_s, u"body-markup"_s, u"sound"_s},
                                         QStringList{u"body"_s, u"body-hyperlinks"_s}, QStringList{}}) {
            serve(capabilities);
            post(u"<b>title</b> & so"_s, u"<a href=\"x\">it's</a> &amp; so"_s);
            QTRY_COMPARE(m_server->notifications.size(), 1);
            QCOMPARE(m_server->notifications.last().title, u"<b>title</b> & so"_s);
            QCOMPARE(m_server->notifications.last().body, capabilities.size() == 3
                                                              ? u"&lt;a href=\"x\"&gt;it's&lt;/a&gt; &amp;amp; so"_s
                                                              : u"<a href=\"x\">it's</a> &amp; so"_s);
            m_server.reset();
        }
    }

    void removesControlCharacters() {
        const struct {
            QString text;
            QString title;
            QString body;
        } rows[]{
            {u"a\0b"_s, u"ab"_s, u"ab"_s},
            {u"\u001b[31mred"_s, u"[31mred"_s, u"[31mred"_s},
            {u"a\u007f\u0085\u009fb"_s, u"ab"_s, u"ab"_s},
            {u"a\tb"_s, u"a b"_s, u"a b"_s},
            {u"a\r\nb\nc"_s, u"a b c"_s, u"a\nb\nc"_s},
            {u"日本語 👩‍👩‍👧 é"_s, u"日本語 👩‍👩‍👧 é"_s,
             u"日本語 👩‍👩‍👧 é"_s},
        };
        serve();
        for (const auto& [text, title, body] : rows) {
            const auto before = m_server->notifications.size();
            post(text, text);
            QTRY_COMPARE(m_server->notifications.size(), before + 1);
            QCOMPARE(m_server->notifications.last().title, title);
            QCOMPARE(m_server->notifications.last().body, body);
        }
    }

    void everyPostArrivesInOrder() {
        serve();
        const QStringList titles{u"same"_s, u"same"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"6"_s};
        for (const QString& title : titles) {
            post(title);
        }
        QTRY_COMPARE(m_done, static_cast<int>(titles.size()));
        QStringList arrived;
        for (const auto& posted : m_server->notifications) {
            QCOMPARE(posted.replaces, 0U);
            arrived.append(posted.title);
        }
        QCOMPARE(arrived, titles);
    }

    void everyServerIsAskedWhatItReads() {
        post(u"lost"_s);
        QTRY_COMPARE(m_done, 1);
        serve({u"body-markup"_s});
        post(u"one"_s, u"<"_s);
        QTRY_COMPARE(m_done, 2);
        QCOMPARE(m_server->notifications.last().body, u"&lt;"_s);
        m_server.reset();
        serve();
        post(u"two"_s, u"<"_s);
        QTRY_COMPARE(m_done, 3);
        QCOMPARE(m_server->notifications.last().body, u"<"_s);
    }

    void serverThatAnswersIsAuthorized() {
        serve();
        QCOMPARE(authorization(), Authorization::authorized);
        QCOMPARE(requestAuthorization(), true);
        QVERIFY(m_server->notifications.isEmpty());
    }

    void noServerIsNotDetermined() {
        QCOMPARE(authorization(), Authorization::notDetermined);
        QCOMPARE(requestAuthorization(), false);
        post(u"lost"_s);
        QTRY_COMPARE(m_done, 1);
    }

    void serverThatRefusesTakesNothingDown() {
        serve();
        m_server->manner = Manner::refusing;
        QCOMPARE(authorization(), Authorization::notDetermined);
        QCOMPARE(requestAuthorization(), false);
        post(u"refused"_s);
        post(u"refused"_s);
        QTRY_COMPARE(m_done, 2);
        QCOMPARE(m_server->notifications.size(), 2);
    }

    void serverThatIsSilentIsWaitedForOnceAPost() {
        serve();
        m_server->manner = Manner::silent;
        QElapsedTimer clock;
        clock.start();
        std::optional<Authorization> state;
        bool twiceAsLong = false;
        m_service->authorizationStatus().then([&](Authorization answer) {
            state = answer;
            m_service->authorizationStatus().then([&](Authorization) { twiceAsLong = true; });
        });
        post(u"one"_s, u"<"_s);
        post(u"two"_s);
        QVERIFY2(clock.elapsed() < 1000, "a call waited for its answer");
        QTRY_VERIFY_WITH_TIMEOUT(state && m_done == 2, answerLimit);
        QVERIFY(!twiceAsLong);
        QCOMPARE(state, Authorization::notDetermined);
        QVERIFY(clock.elapsed() >= 2800); // a timer of seconds may come five per cent early
        QTRY_COMPARE(m_server->notifications.size(), 2);
        QCOMPARE(m_server->notifications.first().body, u"<"_s);

        m_server->manner = Manner::obliging;
        post(u"three"_s);
        QTRY_COMPARE(m_done, 3);
        QCOMPARE(m_server->notifications.size(), 3);
        QTRY_VERIFY_WITH_TIMEOUT(twiceAsLong, answerLimit);
    }

    void whoWaitsGoesOnOnceTheCenterIsGone() {
        serve();
        int answers = 0;
        m_service->authorizationStatus().then([&](Authorization) { ++answers; });
        m_service->requestAuthorization().then([&](bool) { ++answers; });
        post(u"posted all the same"_s);
        m_service.reset();
        QTRY_COMPARE(answers + m_done, 3);
        QCOMPARE(m_server->notifications.size(), 1);
    }

    void centerMayGoInItsOwnAnswer() {
        serve();
        m_service->authorizationStatus().then([this](Authorization) { m_service.reset(); });
        QTRY_VERIFY(!m_service);
        m_service = NotificationService::standard();
        m_service->notify(u"one"_s, {}, identifier).then([this] { m_service.reset(); });
        QTRY_VERIFY(!m_service);
    }

    void answersWithoutABus() {
        QProcess program;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent/bus"_s);
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::MergedChannels);
        program.start(QCoreApplication::applicationFilePath(), {u"--play"_s});
        if (!program.waitForFinished(answerLimit)) {
            program.kill();
            program.waitForFinished();
            QFAIL("an answer did not come");
        }
        QCOMPARE(QString::fromUtf8(program.readAll()), u"authorization 0, done\n"_s);
        QCOMPARE(program.exitCode(), 0);
    }

private:
    void serve(const QStringList& capabilities = {}) { m_server.emplace(m_address, capabilities); }
    void post(const QString& title, const QString& body = {}) {
        m_service->notify(title, body, identifier).then([this] { ++m_done; });
    }
    Authorization authorization() { return QCoro::waitFor(m_service->authorizationStatus()); }
    bool requestAuthorization() { return QCoro::waitFor(m_service->requestAuthorization()); }

    QString m_address;
    std::unique_ptr<NotificationService> m_service;
    std::optional<ScriptedNotificationServer> m_server;
    int m_done = 0;
};

namespace {

/// A program that finds no bus.
int play(int argc, char** argv) {
    const QCoreApplication app{argc, argv};
    const auto service = NotificationService::standard();
    int answers = 0;
    service->authorizationStatus().then([&answers](Authorization state) {
        std::printf("authorization %d, ", static_cast<int>(state));
        ++answers;
    });
    service->notify(u"lost"_s, u"body"_s, identifier).then([] {
        std::puts("done");
        QCoreApplication::quit();
    });
    const int status = QCoreApplication::exec();
    return answers == 1 ? status : 1;
}

}

int main(int argc, char** argv) {
    if (argc > 1 && QByteArray{argv[1]} == "--play") {
        return play(argc, argv);
    }
    const QCoreApplication app{argc, argv};
    const PrivateBus bus;
    TestNotificationService test{bus.address()};
    return QTest::qExec(&test, argc, argv);
}

#include "TestNotificationService.moc"
