#include "platform/AppInfo.h"
#include "system/PermissionCenter.h"
#include "ui/kit/Button.h"
#include "ui/kit/TextLabel.h"
#include "ui/kit/View.h"
#include "ui/settings/FormMetrics.h"
#include "ui/settings/Tabs.h"

#include <QHideEvent>
#include <QPainter>
#include <QShowEvent>
#include <QVBoxLayout>

#include <array>

using namespace FormMetrics;
using namespace Qt::StringLiterals;

namespace {

constexpr std::array statusTexts{"Granted"_L1, "Denied"_L1, "Not determined"_L1, "Check in System Settings"_L1};

/// A link's title stands below the other texts, and its focus ring beyond them.
constexpr int inset = linkButtonStyle.horizontalPadding;

/// One permission: its name and state, what it is for, and the way to its pane where there is one.
class PermissionRow final : public QWidget {
public:
    PermissionRow(const OpenUrl& openPane, const Colours& colours, QWidget* parent)
        : QWidget{parent}
        , m_title{new TextLabel{headline, colours, this}}
        , m_status{new TextLabel{caption, colours, this}}
        , m_detail{new TextLabel{caption, colours, this}}
        , m_open{new Button{u"Open System Settings"_s, {}, linkButtonStyle, colours, this}} {
        m_title->setBuddy(m_status);
        m_status->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
        m_open->hide();

        auto* const heading = new QHBoxLayout;
        heading->setSpacing(rowSpacing);
        heading->addWidget(m_title, 1);
        heading->addWidget(m_status);
        auto* const texts = new QVBoxLayout;
        texts->setContentsMargins(inset, 0, inset, 0);
        texts->setSpacing(permissionSpacing);
        texts->addLayout(heading);
        texts->addWidget(m_detail);
        auto* const column = new QVBoxLayout{this};
        column->setContentsMargins(0, permissionGap + permissionPadding, 0, permissionGap + permissionPadding);
        column->setSpacing(permissionSpacing - linkButtonStyle.verticalPadding);
        column->addLayout(texts);
        column->addWidget(m_open, 0, Qt::AlignLeading);
        connect(m_open, &QPushButton::clicked, this, [this, openPane] { openPane(m_link); });
    }

    void setItem(const PermissionCenter::Item& item) {
        m_link = item.settingsURL.value_or(QUrl{});
        m_title->display(item.title);
        m_status->display(statusTexts.at(static_cast<std::size_t>(item.status)));
        m_detail->display(item.detail);
        m_open->setVisible(item.settingsURL.has_value());
        m_open->setAccessibleDescription(item.title);
        setAccessibleName(item.title);
    }

private:
    QUrl m_link;
    TextLabel* m_title;
    TextLabel* m_status;
    TextLabel* m_detail;
    Button* m_open;
};

class PermissionsTab final : public View {
public:
    PermissionsTab(PermissionCenter& permissions, OpenUrl openPane, const Colours& colours)
        : m_permissions{permissions}
        , m_openPane{std::move(openPane)}
        , m_colours{colours}
        , m_list{new QVBoxLayout{this}} {
        const auto introduction = u"Grant only what you need for WARDEN, desk recover, and agent tooling."_s;
        m_list->setContentsMargins(pagePadding - inset, pagePadding, pagePadding - inset, pagePadding);
        m_list->setSpacing(0);
        auto* const top = new QHBoxLayout;
        m_list->addLayout(top);
        m_list->addStretch();
        top->setContentsMargins(inset, 0, inset, introductionSpacing);
        top->addWidget(new TextLabel{caption, m_colours, nullptr, AppInfo::requirement() + introduction});
        observe(m_permissions);
    }

protected:
    void render() override {
        const auto& items = m_permissions.items.value();
        while (m_rows.size() > items.size()) {
            delete m_rows.takeLast();
        }
        while (m_rows.size() < items.size()) {
            m_rows.append(new PermissionRow{m_openPane, m_colours, this});
            m_list->insertWidget(m_list->count() - 1, m_rows.constLast());
            m_rows.constLast()->show();
        }
        for (qsizetype index = 0; index < items.size(); ++index) {
            m_rows.at(index)->setItem(items.at(index));
        }
    }

    void showEvent(QShowEvent* event) override {
        View::showEvent(event);
        if (!event->spontaneous()) {
            m_permissions.refresh();
        }
    }

    void hideEvent(QHideEvent* event) override {
        View::hideEvent(event);
        if (!event->spontaneous()) {
            m_permissions.cancelRefresh();
        }
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter{this};
        painter.fillRect(rect(), m_colours.of(ColourRole::surface));
        for (const auto* const row : m_rows) {
            painter.fillRect(row->x() + inset, row->y(), row->width() - 2 * inset, 1, m_colours.of(ColourRole::border));
        }
    }

private:
    PermissionCenter& m_permissions;
    OpenUrl m_openPane;
    const Colours& m_colours;
    QVBoxLayout* m_list;
    QList<PermissionRow*> m_rows;
};

}

QWidget* Tabs::permissions(PermissionCenter& permissions, const OpenUrl& openPane, const Colours& colours) {
    return new PermissionsTab{permissions, openPane, colours};
}
