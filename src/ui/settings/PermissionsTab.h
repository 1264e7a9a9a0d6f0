#pragma once

#include "ui/kit/View.h"

#include <QList>
#include <QUrl>

#include <functional>

class Colours;
class PermissionCenter;
class PermissionRow;
class QVBoxLayout;

/// The permissions that the platform's features may need, as a list. It asks for their state each time it is shown,
/// and drops the answer when it is hidden before that comes.
class PermissionsTab final : public View {
    Q_OBJECT

public:
    using OpenPane = std::function<void(const QUrl&)>;

    PermissionsTab(PermissionCenter& permissions, OpenPane openPane, const Colours& colours, QWidget* parent = nullptr);

protected:
    void render() override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void addRow();

    PermissionCenter& m_permissions;
    OpenPane m_openPane;
    const Colours& m_colours;
    QVBoxLayout* m_list;
    QList<PermissionRow*> m_rows;
};
