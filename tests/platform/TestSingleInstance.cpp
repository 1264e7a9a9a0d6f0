#include "platform/SingleInstance.h"

#include "support/InstancePeers.h"

#include <QAbstractEventDispatcher>
#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>
#include <vector>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace InstancePeers;
using namespace Qt::StringLiterals;

namespace {

/// The first, in this process, and what it was told.
struct Listener final {
    const QSet<QByteArray> before = socketNames();
    const std::unique_ptr<SingleInstance> instance = SingleInstance::claim(u"show"_s);
    const QByteArray name = (socketNames() - before).values().value(0);
    QSignalSpy heard{instance.get(), &SingleInstance::messageReceived};
};

}

class TestSingleInstance final : public QObject {
    Q_OBJECT

    static constexpr int limit = 1500;

private slots:
    void init() {
        static int session = 0;
        qputenv("WAYLAND_DISPLAY", "");
        qputenv("DISPLAY", u":test-%1-%2"_s.arg(QCoreApplication::applicationPid()).arg(++session).toUtf8());
    }

    void secondStartHandsItsMessageToTheFirst() {
        Probe first;
        QTRY_COMPARE(first.output(), QByteArray("first\n"));
        QElapsedTimer clock;
        clock.start();
        Probe second{{u"show panel"_s}};
        QVERIFY(second.waitForFinished(limit));
        QVERIFY2(clock.elapsed() < 1000, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(second.output(), QByteArray("second\n"));
        QTRY_COMPARE(first.output(), QByteArray("first\nheard show panel\n"));
        QVERIFY(!SingleInstance::claim(u"again"_s));
        QTRY_COMPARE(first.output(), QByteArray("first\nheard show panel\nheard again\n"));
    }

    void ofManyStartsAtOnceExactlyOneIsTheFirst() {
        constexpr int starts = 12;
        for (int round = 0; round < 3; ++round) {
            init();
            std::vector<std::unique_ptr<Probe>> probes;
            probes.reserve(starts);
            for (int start = 0; start < starts; ++start) {
                probes.push_back(std::make_unique<Probe>());
            }
            const auto count = [&probes](const QByteArray& word) {
                return std::ranges::count_if(probes,
                                             [&](const auto& probe) { return probe->output().startsWith(word); });
            };
            QTRY_COMPARE_WITH_TIMEOUT(count("first") + count("second"), starts, 10000);
            QCOMPARE(count("first"), 1);
            const auto& first =
                *std::ranges::find_if(probes, [](const auto& probe) { return probe->output().startsWith("first"); });
            QTRY_COMPARE(first->output().count("heard show\n"), starts - 1);
        }
    }

    void placeIsFreeAfterTheFirstWasKilled() {
        for (int round = 0; round < 5; ++round) {
            Probe first;
            QTRY_COMPARE(first.output(), QByteArray("first\n"));
            first.kill();
            QVERIFY(first.waitForFinished(limit));
        }
        QVERIFY(SingleInstance::claim(u"show"_s));
    }

    void otherSessionHasAFirstOfItsOwn() {
        const auto here = SingleInstance::claim(u"show"_s);
        QVERIFY(here);
        init();
        QVERIFY(SingleInstance::claim(u"show"_s));
    }

    void screensOfOneDisplayAreTheSameSession() {
        Probe first;
        QTRY_COMPARE(first.output(), QByteArray("first\n"));
        qputenv("DISPLAY", QByteArray{qgetenv("DISPLAY") + ".0"});
        QVERIFY(!SingleInstance::claim(u"show"_s));
    }

    void hungFirstDoesNotHangTheSecond() {
        Probe first;
        QTRY_COMPARE(first.output(), QByteArray("first\n"));
        QCOMPARE(::kill(static_cast<pid_t>(first.processId()), SIGSTOP), 0);
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!SingleInstance::claim(u"show"_s));
        QVERIFY2(clock.elapsed() < limit, qPrintable(QString::number(clock.elapsed())));
    }

    void hungFirstWithAFullQueueDoesNotHangTheSecond() {
        const Listener first;
        std::vector<std::unique_ptr<Client>> queue;
        do {
            queue.push_back(std::make_unique<Client>(first.name));
        } while (queue.back()->connected() && queue.size() < 5000);
        QVERIFY(!queue.back()->connected());
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!SingleInstance::claim(u"show"_s));
        QVERIFY2(clock.elapsed() < limit, qPrintable(QString::number(clock.elapsed())));
    }

    void messageIsCutToItsLimit() {
        Probe first;
        QTRY_COMPARE(first.output(), QByteArray("first\n"));
        QVERIFY(!SingleInstance::claim(QString{500, u'é'}));
        QTRY_COMPARE(first.output(), QByteArray("first\nheard ") + QByteArray("é").repeated(64) + '\n');
    }

    void garbageIsNotAMessage() {
        const QByteArrayList lines{"\n",
                                   QByteArray(65, 'x') + '\n',
                                   QByteArray(1000, 'x') + '\n',
                                   QByteArray(1 << 20, 'x'),
                                   QByteArray(20, '\0') + '\n',
                                   "show\x1b[2J\n"};
        for (const auto& bytes : lines) {
            const Listener first;
            const Client client{first.name};
            QVERIFY(client.connected());
            client.send(bytes);
            QTRY_VERIFY(client.dropped());
            QCOMPARE(first.heard.size(), 0);
            const Client next{first.name};
            next.send("show\n");
            QTRY_COMPARE(first.heard.size(), 1);
        }
    }

    void lineThatComesInPiecesIsRead() {
        const Listener first;
        const Client client{first.name};
        for (const char* piece : {"s", "ho", "w"}) {
            client.send(piece);
            QCoreApplication::processEvents();
            QCOMPARE(first.heard.size(), 0);
        }
        client.send("\n");
        QTRY_COMPARE(first.heard.size(), 1);
        QCOMPARE(first.heard.at(0).at(0).toString(), u"show"_s);
    }

    void firstLineOfAClientThatLeftAtOnceIsRead() {
        const Listener first;
        Client{first.name}.send("one\ntwo\nthree\n");
        QTRY_COMPARE(first.heard.size(), 1);
        QCOMPARE(first.heard.at(0).at(0).toString(), u"one"_s);
        Client{first.name}.send("show\n");
        QTRY_COMPARE(first.heard.size(), 2);
        QCOMPARE(first.heard.at(1).at(0).toString(), u"show"_s);
    }

    void silentClientIsDropped() {
        const Listener first;
        const Client client{first.name};
        QVERIFY(client.connected());
        QTRY_VERIFY(client.dropped());
    }

    void floodLeavesTheFirstListening() {
        const Listener first;
        std::vector<std::unique_ptr<Client>> flood;
        for (int client = 0; client < 500; ++client) {
            flood.push_back(std::make_unique<Client>(first.name));
            flood.back()->send(QByteArray(100, '\xff'));
            if (client % 10 == 0) {
                QCoreApplication::processEvents();
            }
        }
        QTRY_VERIFY(
            std::ranges::all_of(flood, [](const auto& client) { return !client->connected() || client->dropped(); }));
        QCOMPARE(first.heard.size(), 0);
        const Client late{first.name};
        late.send("show\n");
        QTRY_COMPARE(first.heard.size(), 1);
    }

    void withoutDescriptorsItWaitsUntilThereAreSome() {
        const Listener first;
        const Client client{first.name};
        client.send("show\n");
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &before), 0);
        const int lowestFree = ::dup(STDIN_FILENO);
        ::close(lowestFree);
        const rlimit none{.rlim_cur = static_cast<rlim_t>(lowestFree), .rlim_max = before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &none), 0);
        int turns = 0;
        const auto* loop = QAbstractEventDispatcher::instance();
        const auto counting = connect(loop, &QAbstractEventDispatcher::awake, this, [&turns] { ++turns; });
        QTest::qWait(300);
        disconnect(counting);
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &before), 0);
        QVERIFY2(turns < 500, qPrintable(QString::number(turns)));
        QTRY_COMPARE(first.heard.size(), 1);
    }

    void strangerIsNotHeard() {
        if (::geteuid() != 0) {
            QSKIP("only root can be somebody else");
        }
        const Listener first;
        const pid_t stranger = asStranger([&first] {
            const Client client{first.name};
            client.send("show\n");
            for (int tries = 0; tries < 300 && !client.dropped(); ++tries) {
                ::usleep(10000);
            }
            return client.connected() && client.dropped() ? 0 : 1;
        });
        int status = -1;
        QTRY_VERIFY(status != -1 || ::waitpid(stranger, &status, WNOHANG) == stranger);
        QCOMPARE(status, 0);
        QCOMPARE(first.heard.size(), 0);
    }

    void strangerInOurPlaceDoesNotKeepUsFromStarting() {
        if (::geteuid() != 0) {
            QSKIP("only root can be somebody else");
        }
        const QByteArray name = Listener{}.name;
        const pid_t stranger = asStranger([&name] {
            const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
            const sockaddr_un address = abstractAddress(name);
            if (descriptor < 0 ||
                ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), addressSize(name)) != 0 ||
                ::listen(descriptor, 5) != 0) {
                return 1;
            }
            ::pause();
            return 0;
        });
        const bool squatted = QTest::qWaitFor([&name] { return socketNames().contains(name); });
        const auto instance = SingleInstance::claim(u"show"_s);
        ::kill(stranger, SIGKILL);
        ::waitpid(stranger, nullptr, 0);
        QVERIFY(squatted);
        QVERIFY(instance);
    }

    void nothingIsLeftOnTheDisk() {
        const auto files = [] {
            return QDir::temp().entryList({u"*vorna-companion*"_s}, QDir::AllEntries | QDir::System | QDir::Hidden);
        };
        const QStringList before = files();
        const auto first = SingleInstance::claim(u"show"_s);
        QVERIFY(first);
        QCOMPARE(files(), before);
    }
};

QTEST_GUILESS_MAIN(TestSingleInstance)
#include "TestSingleInstance.moc"
