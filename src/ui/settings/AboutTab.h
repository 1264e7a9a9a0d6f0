#pragma once

#include "ui/kit/View.h"

#include <QUrl>

#include <functional>

class FormText;
class GroupedForm;

/// What the program is, its version, its role, and the dashboard's pages.
class AboutTab final : public View {
    Q_OBJECT

public:
    using OpenPage = std::function<void(const QUrl&)>;

    explicit AboutTab(OpenPage openPage, QWidget* parent = nullptr);

protected:
    void render() override;

private:
    void addLinks(GroupedForm& form);

    OpenPage m_openPage;
    FormText* m_version = nullptr;
};
