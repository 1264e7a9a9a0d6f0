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
        QVERIFY(readsAsMissing());
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

    void fileHoldsTheKeysLiterallyUntilTheyAreRemoved() {
        {
            const auto defaults = UserDefaults::standard();
            defaults->setBoolean(manualKey, true);
            defaults->setString(daypartKey, u"dawn"_s);
        }
        QCOMPARE(contents(), "[General]\nvorna.macos.daypart=dawn\nvorna.macos.daypart.manual=true\n"_ba);
        const QStringList left = QDir{m_folder->filePath(u"config/vorna"_s)}.entryList(QDir::Files | QDir::Hidden);
        QCOMPARE(left, QStringList{u"companion.conf"_s});
        {
            const auto defaults = UserDefaults::standard();
            defaults->setBoolean(manualKey, false);
            defaults->remove(daypartKey);
            QVERIFY(!defaults->string(daypartKey));
        }
        QCOMPARE(contents(), "[General]\nvorna.macos.daypart.manual=false\n"_ba);
    }

    void onlyATruthValueCountsAsTrue() {
        for (const QByteArray& stored :
             {"true"_ba, "\"true\""_ba, "false"_ba, ""_ba, "1"_ba, "yes"_ba, "night"_ba, "true, true"_ba,
              "@ByteArray(true)"_ba, "@Invalid()"_ba, R"(@Variant(\0\0\0\x1))"_ba}) {
            init();
            store("[General]\nvorna.macos.daypart.manual=" + stored + "\n");
            QCOMPARE(UserDefaults::standard()->boolean(manualKey), stored == "true");
        }
    }

    void whateverStandsInALineIsNothingButAText() {
        const std::pair<QByteArray, QString> rows[]{
            {"dusk", u"dusk"_s},
            {"  dusk\r", u"dusk"_s},
            {"", u""_s},
            {"d\xC3\xA4mmerung", u"dämmerung"_s},
            {"day, night", u"day, night"_s},
            {R"(@Variant(\0\0\0\x9\x7f\xff\xff\xff))", uR"(@Variant(\0\0\0\x9\x7f\xff\xff\xff))"_s},
        };
        for (const auto& [stored, text] : rows) {
            init();
            store("[General]\nvorna.macos.daypart=" + stored + "\n");
            QCOMPARE(UserDefaults::standard()->string(daypartKey), text);
        }
    }

    void whatOthersWroteIntoTheFileStaysThere() {
        store("[Else/where]\nkey=a = b\n\n[Other]\nvorna.macos.daypart=night\n[General]\nmine=1\n");
        UserDefaults::standard()->setString(daypartKey, u"day"_s);
        QCOMPARE(contents(), "[General]\nmine=1\nvorna.macos.daypart=day\n[Else/where]\nkey=a = b\n"
                             "[Other]\nvorna.macos.daypart=night\n"_ba);
    }

    void corruptFileReadsAsMissingAndIsWrittenOver() {
        QByteArray everyByte;
        for (int byte = 0; byte < 256; ++byte) {
            everyByte.append(static_cast<char>(byte));
        }
        for (const QByteArray& stored : {"[General\nvorna.macos.daypart\n]]=\n\\"_ba, QByteArray(4096, '\0'), everyByte,
                                         QByteArray(1 << 20, 'x'), "[Other]\nvorna.macos.daypart=night\n"_ba}) {
            init();
            store(stored);
            QVERIFY(readsAsMissing());
            UserDefaults::standard()->setString(daypartKey, u"day"_s);
            QCOMPARE(UserDefaults::standard()->string(daypartKey), u"day"_s);
        }
    }

    void unreadableFileReadsAsMissing() {
        if (::geteuid() == 0) {
            QSKIP("root reads every file");
        }
        store("[General]\nvorna.macos.daypart=night\nvorna.macos.daypart.manual=true\n");
        QVERIFY(QFile::setPermissions(path(), QFile::Permissions{}));
        QVERIFY(readsAsMissing());
    }

    void whereNothingCanBeWrittenValuesLastForThisProcess() {
        QVERIFY(QDir{}.mkpath(path())); // a folder in place of the file
        for (const QString& folder : {m_folder->filePath(u"config"_s), u"/proc/self/fd/vorna-nowhere"_s}) {
            qputenv("XDG_CONFIG_HOME", folder.toUtf8());
            const auto defaults = UserDefaults::standard();
            QVERIFY(!defaults->boolean(manualKey));
            defaults->setBoolean(manualKey, true);
            defaults->setString(daypartKey, u"night"_s);
            QCoreApplication::processEvents();
            QVERIFY(defaults->boolean(manualKey));
            QCOMPARE(defaults->string(daypartKey), u"night"_s);
        }
    }

    void homeFolderServesWhenNoConfigurationFolderIsNamed() {
        qputenv("HOME", m_folder->path().toUtf8());
        for (const char* configured : {"", "some/where"}) {
            qputenv("XDG_CONFIG_HOME", configured);
            UserDefaults::standard()->setString(daypartKey, u"day"_s);
            QVERIFY(QFile::remove(m_folder->filePath(u".config/vorna/companion.conf"_s)));
        }
    }

private:
    [[nodiscard]] static bool readsAsMissing() {
        const auto defaults = UserDefaults::standard();
        return !defaults->boolean(manualKey) && !defaults->string(daypartKey) && !defaults->string(manualKey);
    }
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
