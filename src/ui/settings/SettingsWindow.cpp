#include "ui/settings/SettingsWindow.h"

#include "system/PermissionCenter.h"

#include <QScreen>
#include <QShortcut>

#include <utility>

using namespace Qt::StringLiterals;

static constexpr QSize usualSize{520, 680};
// Nobody knows the frame before the window shows. Title bars are 20 to 47 points high.
static constexpr QSize largestFrame{16, 48};

SettingsWindow::SettingsWindow(StatusModel& status, DaypartController& daypart, MakePermissions makePermissions,
                               SettingsLinks links, QObject* parent)
    : QObject{parent}
    , m_status{status}
    , m_daypart{daypart}
    , m_makePermissions{std::move(makePermissions)}
    , m_links{std::move(links)} {}

SettingsWindow::~SettingsWindow() {
    delete m_view;
}

QSize SettingsWindow::firstSize(const QSize& room) {
    return usualSize.boundedTo(room - largestFrame);
}

void SettingsWindow::open() {
    if (m_view.isNull() || m_view->isHidden()) {
        create();
    }
    m_view->show();
    Desktop::bringToFront(*m_view->windowHandle());
}

void SettingsWindow::create() {
    // Read once: Qt would go on keeping the pictures of the last window's icon.
    if (m_icon.isNull()) {
        for (const auto* const file : {":/icon/16.png", ":/icon/32.png", ":/icon/64.png", ":/icon/128.png"}) {
            m_icon.addFile(QString::fromLatin1(file));
        }
    }
    delete m_view;
    m_view = new SettingsView{m_status, m_daypart, m_makePermissions(), m_links};
    connect(m_view, &QObject::destroyed, this, &SettingsWindow::closed);
    m_view->setWindowTitle(u"vorna Settings"_s);
    m_view->setWindowIcon(m_icon);
    m_view->setAttribute(Qt::WA_DeleteOnClose);
    m_view->resize(firstSize(m_view->screen()->availableSize()));
    for (const auto& key : {QKeySequence::Close, QKeySequence::Cancel}) {
        connect(new QShortcut{key, m_view}, &QShortcut::activated, m_view, &QWidget::close);
    }
}

#include "moc_SettingsWindow.cpp"
