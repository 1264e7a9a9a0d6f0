#include "app/CommandLine.h"

#include "ui/VersionLabels.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Option {
    QLatin1StringView name;
    QLatin1StringView shortName;
    CommandLine::Request request;
    QLatin1StringView help;
};

constexpr std::array options{
    Option{"--settings"_L1, {}, CommandLine::Request::showSettings, "open the settings window"_L1},
    Option{"--help"_L1, "-h"_L1, CommandLine::Request::help, "print this help and exit"_L1},
    Option{"--version"_L1, "-v"_L1, CommandLine::Request::version, "print the version and exit"_L1},
};

}

CommandLine CommandLine::parse(const QStringList& words) {
    CommandLine line;
    for (const auto& word : words) {
        const auto* option = std::ranges::find_if(options, [&word](const Option& o) {
            return word == o.name || (!o.shortName.isEmpty() && word == o.shortName);
        });
        if (option == options.end()) {
            return {Request::refused, word};
        }
        line.request = std::max(line.request, option->request);
    }
    return line;
}

QString CommandLine::helpText() {
    QString text = u"Usage: vorna-companion [option]\n\n"
                   u"Watches the local developer platform from the system tray. When it runs already,\n"
                   u"a second start opens its panel and exits.\n\n"_s;
    for (const auto& option : options) {
        const QString names =
            option.shortName.isEmpty() ? QString{option.name} : option.shortName + u", " + option.name;
        text += u"  %1%2\n"_s.arg(names, -16).arg(QString{option.help});
    }
    return text;
}

QString CommandLine::versionText() {
    return u"vorna-companion "_s + VersionLabels::caption() + u'\n';
}
