#include "PanelFixture.h"
#include "PanelReading.h"
#include "ui/kit/DotLabel.h"
#include "ui/kit/TextLabel.h"
#include "ui/menubar/ServiceRowView.h"
#include "ui/menubar/ServicesView.h"

using namespace Qt::StringLiterals;

namespace {

struct Shown final {
    PanelFixture panel;
    ServicesView view{panel.status, panel.daypart};

    Shown() {
        view.setFixedWidth(340);
        view.show();
    }
    [[nodiscard]] QStringList texts() {
        QCoreApplication::processEvents();
        view.adjustSize();
        QCoreApplication::processEvents();
        return PanelReading::names(view);
    }
};

}

class TestServicesView final : public QObject {
    Q_OBJECT

private slots:
    void withoutServicesItSaysWhy() {
        Shown shown;
        QCOMPARE(shown.texts(), (QStringList{u"SERVICES"_s, u"Start bridge: vorna server start"_s}));
        shown.panel.status.bridgeOnline = true;
        QCOMPARE(shown.texts(), (QStringList{u"SERVICES"_s, u"No probes yet"_s}));
    }

    void showsTheFirstEightInTheModelsOrderAndNothingOfTheOthers() {
        Shown shown;
        shown.panel.status.services = PanelFixture::services(12);
        QStringList expected{u"SERVICES"_s};
        for (const auto& service : PanelFixture::services(8)) {
            expected += {service.ok ? u"ok"_s : u"not ok"_s, service.name, service.detail};
        }
        QCOMPARE(shown.texts(), expected);
    }

    void showsFewerAgainWhenThereAreFewer() {
        Shown shown;
        shown.panel.status.services = PanelFixture::services(12);
        QCOMPARE(shown.texts().size(), 1 + 8 * 3);
        shown.panel.status.services = PanelFixture::services(1);
        QCOMPARE(shown.texts(), (QStringList{u"SERVICES"_s, u"ok"_s, u"caddy.process"_s, u"listening on 5432"_s}));
        shown.panel.status.services = QList<StatusModel::ServiceRow>{};
        QCOMPARE(shown.texts().size(), 2);
    }

    void aFailedServiceIsNotOk() {
        Shown shown;
        shown.panel.status.services = {{u"redis"_s, u"redis"_s, false, u"connection refused"_s, u"service"_s}};
        QCOMPARE(shown.texts().at(1), u"not ok"_s);
    }

    void longNamesAndDetailsAreCutInOneLineAndTheDotKeepsItsSize() {
        Shown shown;
        const QString name = u"name "_s.repeated(40);
        const QString detail = u"detail "_s.repeated(40);
        shown.panel.status.services = {{name, name, true, detail, u"service"_s}};
        QCOMPARE(shown.texts().size(), 4);
        auto* nameLabel = PanelReading::named<TextLabel>(shown.view, name);
        auto* detailLabel = PanelReading::named<TextLabel>(shown.view, detail);
        QVERIFY(nameLabel->isCut() && detailLabel->isCut());
        QVERIFY(nameLabel->geometry().right() < detailLabel->geometry().left());
        QCOMPARE(nameLabel->width(), detailLabel->width());
        QCOMPARE(shown.view.findChild<DotLabel*>()->size(), QSize(6, 6));
        QCOMPARE(nameLabel->height(), nameLabel->lineHeight());
    }

    void aRowIsEquallyHighWhateverItSays() {
        Shown shown;
        shown.panel.status.services = PanelFixture::services(1);
        QCOMPARE(shown.texts().size(), 4);
        const int height = shown.view.height();
        for (const auto& text : {u"🚀🔥"_s, u"שלום"_s, u"a\nb\nc"_s, QString{}}) {
            shown.panel.status.services = {{text, text, true, text, u"service"_s}};
            QVERIFY(!shown.texts().isEmpty());
            QCOMPARE(shown.view.height(), height);
        }
    }

    void nameAndDetailShareTheRoom_data() {
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("second");
        QTest::addColumn<int>("firstWidth");
        QTest::addColumn<int>("secondWidth");
        QTest::newRow("both fit") << 120 << 80 << 120 << 80;
        QTest::newRow("long second") << 60 << 900 << 60 << 140;
        QTest::newRow("long first") << 900 << 60 << 140 << 60;
        QTest::newRow("both long") << 900 << 800 << 100 << 100;
    }
    void nameAndDetailShareTheRoom() {
        QFETCH(int, first);
        QFETCH(int, second);
        const auto [firstWidth, secondWidth] = ServiceRowView::splitWidth(200, first, second);
        QTEST(firstWidth, "firstWidth");
        QTEST(secondWidth, "secondWidth");
    }
};

QTEST_MAIN(TestServicesView)
#include "TestServicesView.moc"
