#include "app/CommandLine.h"

#include "ui/VersionLabels.h"

#include <QCommandLineParser>

using namespace Qt::StringLiterals;

namespace {

const QString settings = u"settings"_s;
const QString help = u"help"_s;
const QString version = u"version"_s;

/// What Qt takes from the command line for itself, where the desktop at hand knows it.
const QStringList qtOptionsWithValue{
    u"display"_s,     u"fontengine"_s,   u"geometry"_s,      u"name"_s,          u"platform"_s, u"platformpluginpath"_s,
    u"plugin"_s,      u"icon"_s,         u"qmljsdebugger"_s, u"platformtheme"_s, u"session"_s,  u"qwindowgeometry"_s,
    u"qwindowicon"_s, u"qwindowtitle"_s, u"style"_s,         u"stylesheet"_s,    u"title"_s,    u"visual"_s};
const QStringList qtOptions{u"reverse"_s, u"widgetcount"_s, u"nograb"_s, u"dograb"_s, u"sync"_s};

void addOptions(QCommandLineParser& parser) {
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setApplicationDescription(u"Watches the local developer platform from the menu bar or the system tray. "
                                     "When it runs already, a second start opens its panel and exits."_s);
    parser.addOptions({{settings, u"Opens the settings window."_s},
                       {{u"h"_s, help}, u"Prints this help and exits."_s},
                       {{u"v"_s, version}, u"Prints the version and exits."_s}});
    const auto addHidden = [&parser](const QString& name, const QString& value) {
        QCommandLineOption option{name, QString{}, value};
        option.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOption(option);
    };
    for (const QString& name : qtOptionsWithValue) {
        addHidden(name, u"value"_s);
    }
    for (const QString& name : qtOptions) {
        addHidden(name, {});
    }
}

}

CommandLine CommandLine::parse(const QStringList& words) {
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(words)) {
        return {Request::refused, parser.errorText()};
    }
    if (const auto others = parser.positionalArguments(); !others.isEmpty()) {
        return {Request::refused, u"Unexpected argument '%1'."_s.arg(others.first())};
    }
    return {parser.isSet(help)       ? Request::help
            : parser.isSet(version)  ? Request::version
            : parser.isSet(settings) ? Request::showSettings
                                     : Request::showPanel,
            {}};
}

QString CommandLine::helpText() {
    QCommandLineParser parser;
    addOptions(parser);
    return parser.helpText();
}

QString CommandLine::versionText() {
    return u"vorna-companion "_s + VersionLabels::caption() + u'\n';
}
