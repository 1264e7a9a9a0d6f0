#include "platform/AppInfo.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class TestAppInfo final : public QObject {
    Q_OBJECT

private slots:
    void versionIsThatOfTheBuild();
};

void TestAppInfo::versionIsThatOfTheBuild() {
    QVERIFY(AppInfo::shortVersion().has_value());
    QVERIFY(AppInfo::build().has_value());
    QVERIFY(QRegularExpression{u"^\\d+\\.\\d+\\.\\d+$"_s}.match(*AppInfo::shortVersion()).hasMatch());
    QVERIFY(QRegularExpression{u"^\\d+$"_s}.match(*AppInfo::build()).hasMatch());
}

QTEST_GUILESS_MAIN(TestAppInfo)
#include "TestAppInfo.moc"
