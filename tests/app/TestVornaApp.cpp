#include "app/VornaApp.h"

#include "platform/StatusItem.h"
#include "ui/menubar/PanelWindow.h"

#include <QApplication>
#include <QPointer>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

class FakeStatusItem final : public StatusItem {
public:
    void setSymbol(const QString& /*symbolName*/, const QString& /*meaning*/) override {}
    [[nodiscard]] QRect anchor() const override { return {100, 0, 24, 24}; }
};

QPointer<StatusItem> item;

PanelWindow* panel() {
    const auto windows = QApplication::topLevelWidgets();
    const auto found =
        std::ranges::find_if(windows, [](QWidget* window) { return qobject_cast<PanelWindow*>(window) != nullptr; });
    return found == windows.end() ? nullptr : static_cast<PanelWindow*>(*found);
}

}

// In place of the desktop's own, which no test can press.
std::unique_ptr<StatusItem> StatusItem::create(const QString& /*title*/) {
    auto created = std::make_unique<FakeStatusItem>();
    item = created.get();
    return created;
}

class TestVornaApp final : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void clickElsewhereMakesNoPanel();
    void clickElsewhereClosesThePanel();

private:
    QTemporaryDir m_folder;
};

/// No settings, no tool and no session bus of the user's own.
void TestVornaApp::initTestCase() {
    QVERIFY(m_folder.isValid());
    for (const auto* variable : {"HOME", "PATH", "XDG_CONFIG_HOME"}) {
        qputenv(variable, m_folder.path().toUtf8());
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + m_folder.filePath(u"no-bus"_s).toUtf8());
}

void TestVornaApp::clickElsewhereMakesNoPanel() {
    const VornaApp vorna;
    emit item->clickedElsewhere();
    QVERIFY(panel() == nullptr);
}

void TestVornaApp::clickElsewhereClosesThePanel() {
    const VornaApp vorna;
    emit item->clicked();
    QVERIFY(panel() != nullptr && panel()->isVisible());
    emit item->clickedElsewhere();
    QVERIFY(panel() != nullptr && !panel()->isVisible());
}

QTEST_MAIN(TestVornaApp)
#include "TestVornaApp.moc"
