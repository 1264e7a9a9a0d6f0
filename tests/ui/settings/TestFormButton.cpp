#include "ui/settings/FormButton.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QtTest>

using namespace Qt::StringLiterals;

class TestFormButton final : public QObject {
    Q_OBJECT

private slots:
    void cutTitleIsWholeInTheToolTip_data();
    void cutTitleIsWholeInTheToolTip();
};

void TestFormButton::cutTitleIsWholeInTheToolTip_data() {
    QTest::addColumn<int>("fontSize");
    QTest::addColumn<bool>("isCut");
    QTest::newRow("usual font") << 10 << false;
    QTest::newRow("very large font") << 60 << true;
}

void TestFormButton::cutTitleIsWholeInTheToolTip() {
    QFETCH(int, fontSize);
    const auto title = u"Sign in with <Google> & Workspace"_s;
    FormButton button{title};
    auto font = button.font();
    font.setPointSize(fontSize);
    button.setFont(font);
    button.resize(440, button.sizeHint().height());
    button.show();
    QHelpEvent event{QEvent::ToolTip, QPoint{1, 1}, button.mapToGlobal(QPoint{1, 1})};
    QCoreApplication::sendEvent(&button, &event);
    QTEST(QToolTip::isVisible(), "isCut");
    QCOMPARE(QToolTip::text().contains(title.toHtmlEscaped()), QToolTip::isVisible());
    QToolTip::hideText();
}

QTEST_MAIN(TestFormButton)

#include "TestFormButton.moc"
