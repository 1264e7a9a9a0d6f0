#include "platform/UserDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString daypartKey = u"vorna.macos.daypart"_s;
const QString manualKey = u"vorna.macos.daypart.manual"_s;

}

class TestUserDefaults final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
        qputenv("XDG_CONFIG_HOME", m_folder->filePath(u"config"_s).toUtf8());
    }

    void cleanup() {
        qputenv("HOME", m_home);
        QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner);
        m_folder.reset();
    }

    void everyKeyIsMissingAtFirstAndNothingIsWritten() {
        {
            const auto defaults = UserDefaults::standard();
            QVERIFY(!defaults->boolean(manualKey));
            QVERIFY(!defaults->string(daypartKey));
            QVERIFY(!defaults->string(manualKey));
        }
        QVERIFY(!QFile::exists(path()));
    }

    void whatWasWrittenIsReadBackAtOnceAndByTheNextProcess() {
        {
            const auto defaults = UserDefaults::standard();
            defaults->setBoolean(manualKey, true);
            defaults->setString(daypartKey, u"night"_s);
            QVERIFY(defaults->boolean(manualKey));
            QCOMPARE(defaults->string(daypartKey), u"night"_s);
            QTRY_VERIFY(contents().contains("night"));
        }
        const auto next = UserDefaults::standard();
        QVERIFY(next->boolean(manualKey));
        QCOMPARE(next->string(daypartKey), u"night"_s);
        next->setBoolean(manualKey, false);
        QVERIFY(!next->boolean(manualKey));
        QCOMPARE(next->string(manualKey), u"false"_s);
    }

    void fileHoldsTheKeysLiterally() {
        {
            const auto defaults = UserDefaults::standard();
            defaults->setBoolean(manualKey, true);
            defaults->setString(daypartKey, u"dawn"_s);
        }
        QCOMPARE(contents(), QByteArray("[General]\n"
                                        "vorna.macos.daypart=dawn\n"
                                        "vorna.macos.daypart.manual=true\n"));
        const QStringList left = QDir{m_folder->filePath(u"config/vorna"_s)}.entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(left, QStringList{u"companion.conf"_s});
    }

    void removedKeyIsMissingAndGoneFromTheFile() {
        {
            const auto defaults = UserDefaults::standard();
            defaults->setBoolean(manualKey, true);
            defaults->setString(daypartKey, u"night"_s);
        }
        {
            const auto defaults = UserDefaults::standard();
            defaults->setBoolean(manualKey, false);
            defaults->remove(daypartKey);
            QVERIFY(!defaults->string(daypartKey));
        }
        QCOMPARE(contents(), QByteArray("[General]\nvorna.macos.daypart.manual=false\n"));
    }

    void storedTextCountsAsTrueOnlyWhenItIsATruthValue_data() {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<bool>("expected");
        QTest::newRow("true") << QByteArray("true") << true;
        QTest::newRow("quoted") << QByteArray("\"true\"") << true;
        QTest::newRow("false") << QByteArray("false") << false;
        QTest::newRow("empty") << QByteArray("") << false;
        QTest::newRow("number") << QByteArray("1") << false;
        QTest::newRow("word") << QByteArray("yes") << false;
        QTest::newRow("daypart") << QByteArray("night") << false;
        QTest::newRow("list") << QByteArray("true, true") << false;
        QTest::newRow("bytes") << QByteArray("@ByteArray(true)") << false;
        QTest::newRow("invalid") << QByteArray("@Invalid()") << false;
        QTest::newRow("broken variant") << QByteArray(R"(@Variant(\0\0\0\x1))") << false;
    }
    void storedTextCountsAsTrueOnlyWhenItIsATruthValue() {
        QFETCH(QByteArray, stored);
        store("[General]\nvorna.macos.daypart.manual=" + stored + "\n");
        QTEST(UserDefaults::standard()->boolean(manualKey), "expected");
    }

    void storedTextIsReadOnlyWhenItIsAText_data() {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("expected");
        QTest::newRow("text") << QByteArray("dusk") << u"dusk"_s;
        QTest::newRow("empty") << QByteArray("") << u""_s;
        QTest::newRow("beyond ASCII") << QByteArray("d\xC3\xA4mmerung") << u"dämmerung"_s;
        QTest::newRow("list") << QByteArray("day, night") << QString{};
        QTest::newRow("rectangle") << QByteArray("@Rect(0 0 1 1)") << QString{};
        QTest::newRow("invalid") << QByteArray("@Invalid()") << QString{};
    }
    void storedTextIsReadOnlyWhenItIsAText() {
        QFETCH(QByteArray, stored);
        QFETCH(QString, expected);
        store("[General]\nvorna.macos.daypart=" + stored + "\n");
        const std::optional<QString> read = UserDefaults::standard()->string(daypartKey);
        QCOMPARE(read.has_value(), !expected.isNull());
        QCOMPARE(read.value_or(QString{}), expected);
    }

    void corruptFileReadsAsMissing_data() {
        QTest::addColumn<QByteArray>("stored");
        QTest::newRow("no section sign") << QByteArray("[General\nvorna.macos.daypart\n]]=\n\\");
        QTest::newRow("zero bytes") << QByteArray(4096, '\0');
        QTest::newRow("every byte") << [] {
            QByteArray bytes;
            for (int byte = 0; byte < 256; ++byte) {
                bytes.append(static_cast<char>(byte));
            }
            return bytes;
        }();
        QTest::newRow("one long line") << QByteArray(1 << 20, 'x');
        QTest::newRow("other section") << QByteArray("[Other]\nvorna.macos.daypart=night\n");
    }
    void corruptFileReadsAsMissing() {
        QFETCH(QByteArray, stored);
        store(stored);
        const auto defaults = UserDefaults::standard();
        QVERIFY(!defaults->boolean(manualKey));
        QVERIFY(!defaults->string(daypartKey));
    }

    void corruptFileCanBeWrittenOver() {
        store("[General\n\\garbage");
        {
            const auto defaults = UserDefaults::standard();
            defaults->setString(daypartKey, u"day"_s);
            QCOMPARE(defaults->string(daypartKey), u"day"_s);
        }
        QCOMPARE(UserDefaults::standard()->string(daypartKey), u"day"_s);
    }

    void unreadableFileReadsAsMissing() {
        if (::geteuid() == 0) {
            QSKIP("root reads every file");
        }
        store("[General]\nvorna.macos.daypart=night\nvorna.macos.daypart.manual=true\n");
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions{}));
        const auto defaults = UserDefaults::standard();
        QVERIFY(!defaults->boolean(manualKey));
        QVERIFY(!defaults->string(daypartKey));
    }

    void readOnlyFolderKeepsValuesForThisProcess() {
        qputenv("XDG_CONFIG_HOME", "/proc/self/fd/vorna-nowhere");
        const auto defaults = UserDefaults::standard();
        QVERIFY(!defaults->boolean(manualKey));
        defaults->setBoolean(manualKey, true);
        defaults->setString(daypartKey, u"night"_s);
        QCoreApplication::processEvents();
        QVERIFY(defaults->boolean(manualKey));
        QCOMPARE(defaults->string(daypartKey), u"night"_s);
    }

    void folderInPlaceOfTheFileReadsAsMissing() {
        QVERIFY(QDir{}.mkpath(path()));
        const auto defaults = UserDefaults::standard();
        QVERIFY(!defaults->boolean(manualKey));
        defaults->setBoolean(manualKey, true);
        QCoreApplication::processEvents();
        QVERIFY(defaults->boolean(manualKey));
    }

    void homeFolderServesWhenNoConfigurationFolderIsNamed_data() {
        QTest::addColumn<QByteArray>("configured");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("relative") << QByteArray("some/where");
    }
    void homeFolderServesWhenNoConfigurationFolderIsNamed() {
        QFETCH(QByteArray, configured);
        qputenv("HOME", m_folder->path().toUtf8());
        qputenv("XDG_CONFIG_HOME", configured);
        UserDefaults::standard()->setString(daypartKey, u"day"_s);
        QVERIFY(QFile::exists(m_folder->filePath(u".config/vorna/companion.conf"_s)));
    }

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"config/vorna/companion.conf"_s); }

    [[nodiscard]] QByteArray contents() const {
        QFile file{path()};
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray{};
    }

    void store(const QByteArray& text) const {
        QVERIFY(QDir{}.mkpath(m_folder->filePath(u"config/vorna"_s)));
        QFile file{path()};
        QVERIFY(file.open(QFile::WriteOnly | QFile::Truncate));
        QCOMPARE(file.write(text), text.size());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_home = qgetenv("HOME");
};

QTEST_GUILESS_MAIN(TestUserDefaults)
#include "TestUserDefaults.moc"
