#include "daypart/DaypartController.h"
#include "platform/NotificationService.h"
#include "ui/kit/Button.h"
#include "ui/menubar/ButtonStyles.h"
#include "ui/menubar/MenuBarView.h"
#include "ui/menubar/PanelMetrics.h"
#include "ui/menubar/PanelSections.h"

#include <QKeySequence>

using namespace Qt::StringLiterals;

PanelSections::Section PanelSections::footer(const DaypartController& daypart, NotificationService& notifications,
                                             const PanelActions& actions) {
    auto section = std::make_unique<PanelSection>(daypart, PanelMetrics::sectionMargins, PanelMetrics::Footer::spacing,
                                                  ColourRole::surface);
    const auto add = [&section](const QString& title, const QString& symbolName, const std::function<void()>& action) {
        return &section->addButton(title, symbolName, VornaMenuButtonStyle{}, action);
    };
    add(u"Test notification"_s, u"bell"_s, [&daypart, &notifications] {
        // It goes on by itself; nothing waits for its end.
        [[maybe_unused]] const auto posting = notifications.notify(
            u"vorna"_s, u"Desktop notifications are working · " + DaypartInfo::title(daypart.daypart),
            NotificationService::freshIdentifier());
    });
    add(u"Settings & permissions"_s, u"gearshape"_s, actions.openSettings)
        ->setShortcut(QKeySequence{Qt::CTRL | Qt::Key_Comma});
    add(u"Quit vorna"_s, u"power"_s, actions.quit)->setShortcut(QKeySequence{Qt::CTRL | Qt::Key_Q});
    return section;
}
