#pragma once

#include "ui/settings/Form.h"

#include <QUrl>

#include <functional>

/// What the program is, its version, its role, and the dashboard's pages.
class AboutTab final : public Form {
    Q_OBJECT

public:
    using OpenPage = std::function<void(const QUrl&)>;

    AboutTab(OpenPage openPage, const Colours& colours, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    OpenPage m_openPage;
    TextLabel* m_version;
};
