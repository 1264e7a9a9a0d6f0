#include "platform/AppInfo.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class TestAppInfo final : public QObject {
    Q_OBJECT

private slots:
    void versionIsThatOfTheBuild() {
        QVERIFY(AppInfo::shortVersion().has_value());
        QVERIFY(AppInfo::build().has_value());
        QVERIFY(QRegularExpression{u"^\\d+\\.\\d+\\.\\d+$"_s}.match(*AppInfo::shortVersion()).hasMatch());
        QVERIFY(QRegularExpression{u"^\\d+$"_s}.match(*AppInfo::build()).hasMatch());
    }

    void saysWhatItRunsOn() {
        QCOMPARE(AppInfo::name(), u"vorna for Linux"_s);
#ifdef __x86_64__
        QCOMPARE(AppInfo::architecture(), u"x86_64 · Linux"_s);
#endif
        QVERIFY(AppInfo::architecture().endsWith(u" · Linux"_s));
        QCOMPARE(AppInfo::requirement(), QString{});
    }
};

QTEST_GUILESS_MAIN(TestAppInfo)
#include "TestAppInfo.moc"
