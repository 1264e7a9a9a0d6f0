#include "PanelSheet.h"

#include "ui/menubar/MenuBarView.h"
#include "ui/menubar/PanelFrame.h"

namespace {

QStringList textsOf(const QWidget& widget) {
    QStringList texts;
    if (!widget.accessibleName().isEmpty()) {
        texts += widget.accessibleName();
    }
    for (const QObject* child : widget.children()) {
        const auto* below = qobject_cast<const QWidget*>(child);
        if (below != nullptr && below->isVisible()) {
            texts += textsOf(*below);
        }
    }
    return texts;
}

}

PanelSheet::PanelSheet(std::unique_ptr<MenuBarView> content, DaypartController& daypart)
    : m_colours{daypart}
    , m_content{content.release()}
    , m_frame{new PanelFrame{m_colours, this}} {
    setAttribute(Qt::WA_DontShowOnScreen);
    m_content->setParent(this);
    m_frame->setCorners(PanelFrame::Corners::round);
    m_frame->raise();
}

QImage PanelSheet::draw(qreal scale) {
    settle();
    QImage image{(QSizeF{size()} * scale).toSize(), QImage::Format_ARGB32_Premultiplied};
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    render(&image, {}, {}, DrawChildren);
    return image;
}

QStringList PanelSheet::texts() const {
    return textsOf(*m_content);
}

void PanelSheet::settle() {
    m_content->renderPending();
    m_content->fitHeight();
    resize(m_content->size());
    m_frame->setGeometry(rect());
}
