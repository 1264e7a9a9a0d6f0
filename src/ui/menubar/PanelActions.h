#pragma once

#include <QUrl>

#include <functional>

/// What the panel asks of the application around it. All are required.
struct PanelActions final {
    std::function<void()> openSettings;
    std::function<void(const QUrl&)> openUrl;
    std::function<void()> quit;
};
