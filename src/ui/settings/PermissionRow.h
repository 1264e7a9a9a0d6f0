#pragma once

#include "system/PermissionCenter.h"

#include <QUrl>
#include <QWidget>

class Button;
class Colours;
class TextLabel;

/// One permission: its name and state, what it is for, and the way to its pane where there is one.
class PermissionRow final : public QWidget {
    Q_OBJECT

public:
    explicit PermissionRow(const Colours& colours, QWidget* parent = nullptr);

    /// Everything has its place when it returns, but for the row itself.
    void setItem(const PermissionCenter::Item& item);

signals:
    /// The user wants to see the pane behind this link.
    void paneWanted(const QUrl& link);

private:
    QUrl m_link;
    TextLabel* m_title;
    TextLabel* m_status;
    TextLabel* m_detail;
    Button* m_open;
};
