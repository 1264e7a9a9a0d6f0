#include "platform/AppInfo.h"
#include "ui/VersionLabels.h"

#include <QTest>

using namespace Qt::StringLiterals;

using Text = std::optional<QString>;
Q_DECLARE_METATYPE(Text)

class TestVersionLabels final : public QObject {
    Q_OBJECT

private slots:
    void writesWhatIsKnown_data() {
        QTest::addColumn<Text>("shortVersion");
        QTest::addColumn<Text>("build");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("label");
        QTest::newRow("both") << Text{u"1.2"_s} << Text{u"7"_s} << u"v1.2 (7)"_s << u"v1.2 (build 7)"_s;
        QTest::newRow("equal") << Text{u"7"_s} << Text{u"7"_s} << u"v7 (7)"_s << u"v7 (build 7)"_s;
        QTest::newRow("no build") << Text{u"1.2"_s} << Text{} << u"v1.2 (?)"_s << u"v1.2 (build ?)"_s;
        QTest::newRow("no version") << Text{} << Text{u"7"_s} << u"v? (7)"_s << u"v? (build 7)"_s;
        QTest::newRow("nothing") << Text{} << Text{} << u"v? (?)"_s << u"v? (build ?)"_s;
    }
    void writesWhatIsKnown() {
        QFETCH(Text, shortVersion);
        QFETCH(Text, build);
        QTEST(VersionLabels::caption(shortVersion, build), "caption");
        QTEST(VersionLabels::label(shortVersion, build), "label");
    }

    void speaksOfThisProgramUnlessTold() {
        QCOMPARE(VersionLabels::caption(), VersionLabels::caption(AppInfo::shortVersion(), AppInfo::build()));
        QCOMPARE(VersionLabels::label(), VersionLabels::label(AppInfo::shortVersion(), AppInfo::build()));
    }
};

QTEST_MAIN(TestVersionLabels)
#include "TestVersionLabels.moc"
