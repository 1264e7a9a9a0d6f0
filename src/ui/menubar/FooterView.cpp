#include "ui/menubar/FooterView.h"

#include "daypart/DaypartController.h"
#include "system/NotificationService.h"
#include "ui/kit/Button.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/VornaMenuButtonStyle.h"

#include <QKeySequence>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

FooterView::FooterView(DaypartController& daypart, NotificationService& notifications, const PanelActions& actions,
                       QWidget* parent)
    : PanelSection{daypart, parent, PanelMetrics::sectionMargins, PanelMetrics::Footer::spacing, ColourRole::surface}
    , m_daypart{daypart}
    , m_notifications{notifications} {
    addButton(u"Test notification"_s, u"bell"_s, [this] { postTestNotification(); });
    auto* settings = addButton(u"Settings & permissions"_s, u"gearshape"_s, actions.openSettings);
    settings->setShortcut(QKeySequence{Qt::CTRL | Qt::Key_Comma});
    auto* quit = addButton(u"Quit vorna"_s, u"power"_s, actions.quit);
    quit->setShortcut(QKeySequence{Qt::CTRL | Qt::Key_Q});
}

Button* FooterView::addButton(const QString& title, const QString& symbolName, std::function<void()> action) {
    auto* button = new Button{title, symbolName, VornaMenuButtonStyle{}, colours(), this};
    connect(button, &QPushButton::clicked, this, std::move(action));
    column().addWidget(button);
    return button;
}

void FooterView::postTestNotification() {
    // It goes on by itself; nothing waits for its end.
    [[maybe_unused]] const auto posting = m_notifications.notify(
        u"vorna"_s, u"Desktop notifications are working · " + DaypartInfo::title(m_daypart.daypart),
        NotificationService::freshIdentifier());
}

#include "moc_FooterView.cpp"
