#pragma once

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "support/FakeNotificationCenter.h"
#include "support/FakeTool.h"
#include "support/MemoryDefaults.h"
#include "system/NotificationService.h"
#include "system/PermissionCenter.h"
#include "ui/settings/FormText.h"

#include <QPushButton>
#include <QWidget>

#include <algorithm>
#include <memory>

/// Everything that a settings window needs, at noon, with a bridge that nobody runs.
struct SettingsFixture final {
    FakeNotificationCenter center;
    NotificationService notifications{center};
    FakeTool tool;
    MemoryDefaults defaults;
    QDateTime now{QDate{2026, 3, 2}, QTime{12, 0}};
    StatusModel status{notifications, tool.runner(), QUrl{QStringLiteral("http://127.0.0.1:9")}};
    DaypartController daypart{defaults, [this] { return now; }};
    QList<QUrl> openedPages;
    QList<QUrl> openedPanes;

    [[nodiscard]] static QUrl linkTo(SystemSettings::Pane pane) {
        return QUrl{QStringLiteral("pane:%1").arg(static_cast<int>(pane))};
    }

    [[nodiscard]] std::unique_ptr<PermissionCenter> newPermissions() {
        return std::make_unique<PermissionCenter>(
            notifications, [] { return false; }, [](SystemSettings::Pane pane) { return std::optional{linkTo(pane)}; });
    }
};

/// The texts that can be seen in a widget, from top to bottom, and from left to right in a line.
inline QList<FormText*> shownTexts(const QWidget& widget) {
    auto texts = widget.findChildren<FormText*>();
    texts.removeIf([&](const FormText* text) { return !text->isVisibleTo(&widget); });
    const auto centre = [&](const FormText* text) { return text->mapTo(&widget, text->rect().center()); };
    std::ranges::sort(texts, [&](const FormText* one, const FormText* other) {
        const auto first = centre(one);
        const auto second = centre(other);
        constexpr int oneLine = 4;
        return std::abs(first.y() - second.y()) > oneLine ? first.y() < second.y() : first.x() < second.x();
    });
    return texts;
}

inline QStringList shownStrings(const QWidget& widget) {
    QStringList strings;
    for (const auto* text : shownTexts(widget)) {
        strings.append(text->text());
    }
    return strings;
}

inline FormText* shownText(const QWidget& widget, const QString& string) {
    for (auto* text : shownTexts(widget)) {
        if (text->text() == string) {
            return text;
        }
    }
    return nullptr;
}

template <typename Button = QAbstractButton>
inline Button* shownButton(const QWidget& widget, const QString& title) {
    for (auto* button : widget.findChildren<Button*>()) {
        if (button->text() == title && button->isVisibleTo(&widget)) {
            return button;
        }
    }
    return nullptr;
}
