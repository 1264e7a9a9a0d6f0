#pragma once

#include "system/PermissionCenter.h"

#include <QUrl>
#include <QWidget>

class FormText;
class LinkButton;

/// One permission: its name and state, what it is for, and the way to its pane where there is one.
class PermissionRow final : public QWidget {
    Q_OBJECT

public:
    explicit PermissionRow(QWidget* parent = nullptr);

    void setItem(const PermissionCenter::Item& item);

signals:
    /// The user wants to see the pane behind this link.
    void paneWanted(const QUrl& link);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QUrl m_link;
    FormText* m_title;
    FormText* m_status;
    FormText* m_detail;
    LinkButton* m_open;
};
