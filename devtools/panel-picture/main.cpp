#include "PanelSheet.h"

#include "app/StatusModel.h"
#include "daypart/DaypartController.h"
#include "platform/NotificationService.h"
#include "platform/UserDefaults.h"
#include "ui/menubar/MenuBarView.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto timeLimit = 20s; // a poll ends by itself after 10 seconds of silence
constexpr double largestScale = 8;

class NoDefaults final : public UserDefaults {
public:
    bool boolean(const QString& /*key*/) const override { return false; }
    std::optional<QString> string(const QString& /*key*/) const override { return std::nullopt; }
    void setBoolean(const QString& /*key*/, bool /*value*/) override {}
    void setString(const QString& /*key*/, const QString& /*value*/) override {}
    void remove(const QString& /*key*/) override {}
};

class NoNotifications final : public NotificationService {
public:
    QCoro::Task<bool> requestAuthorization() override { co_return false; }
    QCoro::Task<Authorization> authorizationStatus() override { co_return Authorization::denied; }
    QCoro::Task<> notify(QString, QString, QString) override { co_return; }
};

QCoro::Task<VornaCLIRunner::Result> noTool(QStringList /*arguments*/, double /*timeout*/) {
    co_return VornaCLIRunner::Result{.exitCode = 127, .stdOut = {}, .stdErr = {}};
}

struct Request {
    QString output;
    std::optional<Daypart> daypart;
    double scale = 1;
};

[[noreturn]] void refuse(const QString& reason) {
    std::fprintf(stderr, "vorna-panel-picture: %s\n", qPrintable(reason));
    std::exit(EXIT_FAILURE);
}

Request requested() {
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Polls the bridge once, draws the panel and prints what it says."_s);
    parser.addHelpOption();
    parser.addOptions({{u"output"_s, u"The picture to write."_s, u"file.png"_s, u"panel.png"_s},
                       {u"daypart"_s, u"dawn, day, dusk, night, or auto for the clock's."_s, u"name"_s, u"auto"_s},
                       {u"scale"_s, u"Pixels a point."_s, u"number"_s, u"1"_s}});
    parser.process(*QCoreApplication::instance());
    Request request;
    request.output = parser.value(u"output"_s);
    const QString daypart = parser.value(u"daypart"_s);
    request.daypart = DaypartInfo::fromRawValue(daypart);
    if (!request.daypart && daypart != u"auto"_s) {
        refuse(u"there is no daypart \""_s + daypart + u'"');
    }
    request.scale = parser.value(u"scale"_s).toDouble();
    const bool isScale = request.scale > 0 && request.scale <= largestScale;
    if (!isScale) {
        refuse(u"the scale is a number above 0, at most 8"_s);
    }
    return request;
}

void pollOnce(StatusModel& status) {
    status.poll();
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, qApp, [&status] {
        if (!status.polling) {
            QCoreApplication::exit(EXIT_SUCCESS);
        }
    });
    look.start(20ms);
    QTimer::singleShot(timeLimit, qApp, [] { QCoreApplication::exit(EXIT_FAILURE); });
    if (QCoreApplication::exec() != EXIT_SUCCESS) {
        refuse(u"the bridge did not answer in time"_s);
    }
}

void print(const QStringList& texts) {
    std::printf("%s\n", texts.join(u'\n').toUtf8().constData());
}

}

/// Polls the bridge once, draws the panel and prints what it says. Needs no display.
int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application{argc, argv};
    const Request request = requested();

    NoDefaults defaults;
    NoNotifications notifications;
    StatusModel status{notifications, noTool};
    DaypartController daypart{defaults};
    if (request.daypart) {
        daypart.set(*request.daypart);
    }
    const PanelActions noActions{[] {}, [](const QUrl& /*url*/) {}, [] {}};
    PanelSheet sheet{std::make_unique<MenuBarView>(status, daypart, notifications, noActions), daypart};
    sheet.show();
    pollOnce(status);

    if (!sheet.draw(request.scale).save(request.output)) {
        refuse(u"cannot write "_s + request.output);
    }
    print(sheet.texts());
    return EXIT_SUCCESS;
}
