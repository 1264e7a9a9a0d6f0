#pragma once

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "support/FakeNotificationService.h"
#include "support/FakeTool.h"
#include "support/MemoryDefaults.h"
#include "system/PermissionCenter.h"
#include "ui/kit/DotLabel.h"
#include "ui/settings/SettingsWindow.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QTabBar>

#include <algorithm>
#include <memory>

/// Everything that a settings window needs, at noon, with a bridge that nobody runs.
struct SettingsFixture {
    enum class Tab { bridge, permissions, daypart, about };

    FakeNotificationService notifications;
    FakeTool tool;
    MemoryDefaults defaults;
    QDateTime now{QDate{2026, 3, 2}, QTime{12, 0}};
    StatusModel status{notifications, tool.runner(), QUrl{QStringLiteral("http://127.0.0.1:9")}};
    DaypartController daypart{defaults, [this] { return now; }};
    QPointer<PermissionCenter> permissionCenter; ///< the last that was made
    int permissionCenters = 0;
    int refreshes = 0;
    QList<QUrl> openedPages;
    QList<QUrl> openedPanes;

    [[nodiscard]] static QUrl linkTo(SystemSettings::Pane pane) {
        return QUrl{QStringLiteral("pane:%1").arg(static_cast<int>(pane))};
    }

    [[nodiscard]] std::unique_ptr<PermissionCenter> newPermissions() {
        auto made = std::make_unique<PermissionCenter>(
            notifications, [] { return false; }, [](SystemSettings::Pane pane) { return std::optional{linkTo(pane)}; });
        ++permissionCenters;
        permissionCenter = made.get();
        QObject::connect(made.get(), &ObservableObject::objectWillChange, made.get(), [this] { ++refreshes; });
        return made;
    }

    [[nodiscard]] SettingsLinks links() {
        return {.openPage = [this](const QUrl& page) { openedPages.append(page); },
                .openPane = [this](const QUrl& pane) { openedPanes.append(pane); }};
    }
};

/// The fixture with its window, which is open.
struct OpenSettings : SettingsFixture {
    SettingsWindow window{status, daypart, [this] { return newPermissions(); }, links()};

    OpenSettings() { window.open(); }

    [[nodiscard]] SettingsView* view() const {
        for (auto* const widget : QApplication::topLevelWidgets()) {
            if (auto* const found = qobject_cast<SettingsView*>(widget); found != nullptr && found->isVisible()) {
                return found;
            }
        }
        return nullptr;
    }
    /// Or does so just now.
    [[nodiscard]] bool hasPolled() const { return status.polling || status.lastPoll.value(); }

    [[nodiscard]] QTabBar& tabs() const { return *view()->findChild<QTabBar*>(); }

    /// Until what is announced is rendered, and laid out at every level.
    static void settle() {
        for (int turn = 0; turn < 4; ++turn) {
            QCoreApplication::processEvents();
        }
    }
    void show(Tab tab) const {
        tabs().setCurrentIndex(static_cast<int>(tab));
        settle();
    }

    [[nodiscard]] static QString said(const QLabel* text) {
        return QAccessible::queryAccessibleInterface(const_cast<QLabel*>(text))->text(QAccessible::Name);
    }

    /// The texts that can be seen.
    [[nodiscard]] QList<QLabel*> texts() const {
        auto found = view()->findChildren<QLabel*>();
        found.removeIf([this](const QLabel* text) {
            return said(text).isEmpty() || !text->isVisibleTo(view()) || qobject_cast<const DotLabel*>(text) != nullptr;
        });
        return found;
    }
    [[nodiscard]] QLabel* text(const QString& string) const {
        const auto all = texts();
        const auto found = std::ranges::find(all, string, &said);
        return found == all.end() ? nullptr : *found;
    }
    [[nodiscard]] QAbstractButton* button(const QString& title, int nth = 0) const {
        auto all = view()->findChildren<QAbstractButton*>();
        all.removeIf([&](const auto* button) { return button->text() != title || !button->isVisibleTo(view()); });
        return all.value(nth);
    }
};

/// What a settings window may come to show.
namespace SettingsStates {

using Item = PermissionCenter::Item;
using Status = Item::Status;

inline QPalette desktop(QRgb window, QRgb text, QRgb button) {
    QPalette palette{QColor{button}, QColor{window}};
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Highlight, QColor{53, 132, 228});
    return palette;
}

inline const auto light = desktop(0xfff1f1f2, 0xff1d1d1f, 0xffffffff);
inline const auto dark = desktop(0xff242428, 0xfff2f2f3, 0xff3a3a3f);

inline void asItIs(OpenSettings&) {}

inline void online(OpenSettings& settings) {
    settings.status.bridgeOnline = true;
    settings.status.caddyDetail = QStringLiteral("running · 3/4 sites");
    settings.status.postgresDetail = QStringLiteral("accepting on 5432");
    settings.status.accountLine = QStringLiteral("Signed in · CTA hidden");
}

inline void everyStatus(OpenSettings& settings) {
    QList<Item> items;
    for (const auto status : {Status::granted, Status::denied, Status::notDetermined, Status::unknown}) {
        const auto number = QString::number(items.size());
        const auto link =
            status == Status::granted ? std::nullopt : std::optional{QUrl{QStringLiteral("pane:") + number}};
        items += {number, QStringLiteral("Permission ") + number, QStringLiteral("What it is for"), status, link};
    }
    settings.permissionCenter->items = items;
}

template <Daypart choice>
void pinned(OpenSettings& settings) {
    settings.daypart.set(choice);
}

}
