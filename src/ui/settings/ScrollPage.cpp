#include "ui/settings/ScrollPage.h"

#include <QScrollBar>
#include <QVBoxLayout>

ScrollPage::ScrollPage(const QString& name, QWidget* parent)
    : QScrollArea{parent} {
    auto* const page = new QWidget;
    m_content = new QVBoxLayout{page};
    setAccessibleName(name);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
    setWidget(page);
    page->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this,
            [this](int least, int most) { setFocusPolicy(most > least ? Qt::StrongFocus : Qt::NoFocus); });
}

#include "moc_ScrollPage.cpp"
