#include "ui/VersionLabels.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestVersionLabels final : public QObject {
    Q_OBJECT

private slots:
    void writesWhatIsKnown() {
        QCOMPARE(VersionLabels::caption(u"1.2"_s, u"7"_s), u"v1.2 (7)"_s);
        QCOMPARE(VersionLabels::label(u"1.2"_s, u"7"_s), u"v1.2 (build 7)"_s);
        QCOMPARE(VersionLabels::caption(u"7"_s, u"7"_s), u"v7 (7)"_s);
        QCOMPARE(VersionLabels::caption(u"1.2"_s, std::nullopt), u"v1.2 (?)"_s);
        QCOMPARE(VersionLabels::label(std::nullopt, u"7"_s), u"v? (build 7)"_s);
        QCOMPARE(VersionLabels::caption(std::nullopt, std::nullopt), u"v? (?)"_s);
    }

    void speaksOfThisProgramUnlessTold() {
        QCOMPARE(VersionLabels::caption(), VersionLabels::caption(AppInfo::shortVersion(), AppInfo::build()));
        QCOMPARE(VersionLabels::label(), VersionLabels::label(AppInfo::shortVersion(), AppInfo::build()));
    }
};

QTEST_APPLESS_MAIN(TestVersionLabels)
#include "TestVersionLabels.moc"
