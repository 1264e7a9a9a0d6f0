#pragma once

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "support/FakeNotificationCenter.h"
#include "support/FakeTool.h"
#include "support/MemoryDefaults.h"
#include "system/NotificationService.h"
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

    FakeNotificationCenter center;
    NotificationService notifications{center};
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
    [[nodiscard]] QTabBar& tabs() const { return *view()->findChild<QTabBar*>(); }
    void show(Tab tab) const { tabs().setCurrentIndex(static_cast<int>(tab)); }

    [[nodiscard]] static QString said(const QLabel* text) {
        return QAccessible::queryAccessibleInterface(const_cast<QLabel*>(text))->text(QAccessible::Name);
    }

    /// The texts that can be seen, from top to bottom, and from left to right in a line.
    [[nodiscard]] QList<QLabel*> texts() const {
        auto found = view()->findChildren<QLabel*>();
        found.removeIf([this](const QLabel* text) {
            return said(text).isEmpty() || !text->isVisibleTo(view()) || qobject_cast<const DotLabel*>(text) != nullptr;
        });
        const auto centre = [this](const QLabel* text) { return text->mapTo(view(), text->rect().center()); };
        std::ranges::sort(found, [&](const QLabel* one, const QLabel* other) {
            constexpr int oneLine = 4;
            const auto first = centre(one);
            const auto second = centre(other);
            return std::abs(first.y() - second.y()) > oneLine ? first.y() < second.y() : first.x() < second.x();
        });
        return found;
    }
    [[nodiscard]] QStringList strings() const {
        QStringList found;
        for (const auto* text : texts()) {
            found.append(said(text));
        }
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
    void press(const QString& title, int nth = 0) const { button(title, nth)->click(); }
};
