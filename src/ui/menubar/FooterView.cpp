#include "ui/menubar/FooterView.h"

#include "daypart/DaypartController.h"
#include "system/NotificationService.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/VornaMenuButton.h"

#include <QKeySequence>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

FooterView::FooterView(DaypartController& daypart, NotificationService& notifications, const PanelActions& actions,
                       QWidget* parent)
    : PanelSection{parent, PanelMetrics::sectionMargins, PanelMetrics::Footer::spacing}
    , m_daypart{daypart}
    , m_notifications{notifications} {
    addButton(u"Test notification"_s, u"bell"_s, [this] { postTestNotification(); });
    auto* settings = addButton(u"Settings & permissions"_s, u"gearshape"_s, actions.openSettings);
    settings->setShortcut(QKeySequence{Qt::CTRL | Qt::Key_Comma});
    auto* quit = addButton(u"Quit vorna"_s, u"power"_s, actions.quit);
    quit->setShortcut(QKeySequence{Qt::CTRL | Qt::Key_Q});
    observe(daypart);
}

VornaMenuButton* FooterView::addButton(const QString& title, const QString& symbolName, std::function<void()> action) {
    auto* button = new VornaMenuButton{title, symbolName, this};
    connect(button, &QPushButton::clicked, this, std::move(action));
    column().addWidget(button);
    m_buttons += button;
    return button;
}

void FooterView::postTestNotification() {
    // It goes on by itself; nothing waits for its end.
    [[maybe_unused]] const auto posting = m_notifications.notify(
        u"vorna"_s, u"Desktop notifications are working · " + DaypartInfo::title(m_daypart.daypart),
        NotificationService::freshIdentifier());
}

void FooterView::render() {
    const DaypartPalette& palette = m_daypart.palette;
    setFill(palette.surface);
    for (auto* button : std::as_const(m_buttons)) {
        button->setButtonStyle({palette});
    }
}

#include "moc_FooterView.cpp"
