#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "platform/NotificationService.h"
#include "platform/UserDefaults.h"
#include "system/PermissionCenter.h"
#include "ui/settings/SettingsView.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTabBar>

#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

class NoDefaults final : public UserDefaults {
public:
    bool boolean(const QString&) const override { return false; }
    std::optional<QString> string(const QString&) const override { return std::nullopt; }
    void setBoolean(const QString&, bool) override {}
    void setString(const QString&, const QString&) override {}
    void remove(const QString&) override {}
};

class GrantedNotifications final : public NotificationService {
public:
    QCoro::Task<bool> requestAuthorization() override { co_return true; }
    QCoro::Task<Authorization> authorizationStatus() override { co_return Authorization::authorized; }
    QCoro::Task<> notify(QString, QString, QString) override { co_return; }
};

QPalette palette(QRgb window, QRgb text, QRgb button) {
    QPalette made{QColor{button}, QColor{window}};
    made.setColor(QPalette::WindowText, text);
    made.setColor(QPalette::Text, text);
    made.setColor(QPalette::Base, QColor{window});
    made.setColor(QPalette::ButtonText, text);
    made.setColor(QPalette::Highlight, QColor{53, 132, 228});
    return made;
}

struct Appearance final {
    QString name;
    QPalette palette;
};

void fill(StatusModel& status, bool isLong) {
    status.bridgeOnline = !isLong;
    status.caddyDetail = isLong
                             ? u"bad gateway from "_s + u"https://a-very-long-host-name.vorna.localhost/"_s.repeated(12)
                             : u"running · 3/4 sites"_s;
    status.postgresDetail =
        isLong ? u"refused on every address that was tried, and tried again, "_s.repeated(4) : u"accepting on 5432"_s;
    status.accountLine = isLong ? u"Installed · sign in to hide download CTA"_s : u"Signed in · CTA hidden"_s;
}

/// A new layout asks for another, a level higher each turn of the event loop.
void settle() {
    constexpr int turns = 2;
    for (int turn = 0; turn < turns; ++turn) {
        QApplication::processEvents();
    }
}

void takePictures(SettingsView& view, const QDir& folder, const QString& appearance) {
    view.setAttribute(Qt::WA_DontShowOnScreen);
    view.show();
    auto* const tabs = view.findChild<QTabBar*>();
    for (int index = 0; index < tabs->count(); ++index) {
        tabs->setCurrentIndex(index);
        settle();
        view.grab().save(
            folder.filePath(u"settings-"_s + tabs->tabText(index).toLower() + u'-' + appearance + u".png"_s));
    }
}

void addOptions(QCommandLineParser& parser) {
    parser.addHelpOption();
    parser.addPositionalArgument(u"folder"_s, u"where the pictures go"_s);
    parser.addOptions({{u"width"_s, u"in points"_s, u"width"_s, u"520"_s},
                       {u"height"_s, u"in points"_s, u"height"_s, u"680"_s},
                       {u"font-size"_s, u"in points"_s, u"size"_s, u"10"_s},
                       {u"long"_s, u"with long texts, and pinned"_s}});
}

}

/// Takes pictures of the settings' four tabs, in a light and in a dark palette, with made-up figures, and with
/// the links that the running desktop has. Qt's own options hold: `-style`, `-platform`, `-reverse`.
int main(int argc, char** argv) {
    const QApplication application{argc, argv};
    QCommandLineParser parser;
    addOptions(parser);
    parser.process(application);
    if (parser.positionalArguments().size() != 1) {
        parser.showHelp(EXIT_FAILURE);
    }
    auto font = QApplication::font();
    font.setPointSize(parser.value(u"font-size"_s).toInt());
    QApplication::setFont(font);

    NoDefaults defaults;
    GrantedNotifications notifications;
    StatusModel status{notifications};
    DaypartController daypart{defaults};
    fill(status, parser.isSet(u"long"_s));
    if (parser.isSet(u"long"_s)) {
        daypart.set(Daypart::night);
    }
    const std::array appearances{Appearance{u"light"_s, palette(0xfff1f1f2, 0xff1d1d1f, 0xffffffff)},
                                 Appearance{u"dark"_s, palette(0xff242428, 0xfff2f2f3, 0xff3a3a3f)}};
    const QDir folder{parser.positionalArguments().constFirst()};
    for (const auto& appearance : appearances) {
        QApplication::setPalette(appearance.palette);
        SettingsView view{status, daypart, std::make_unique<PermissionCenter>(notifications, [] { return false; }), {}};
        view.resize(parser.value(u"width"_s).toInt(), parser.value(u"height"_s).toInt());
        takePictures(view, folder, appearance.name);
    }
    return EXIT_SUCCESS;
}
