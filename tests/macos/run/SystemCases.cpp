#include "Cases.h"
#include "platform/AppInfo.h"
#include "platform/ChildDescriptors.h"
#include "platform/SingleInstance.h"
#include "platform/SystemSettings.h"
#include "platform/UserDefaults.h"

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace Doubles;

namespace {

const QString daypart = u"vorna.macos.daypart"_s;
const QString manual = u"vorna.macos.daypart.manual"_s;

std::unique_ptr<SingleInstance> instance;

void keepText(const QString& text) {
    UserDefaults::standard()->setString(daypart, text);
    tell(UserDefaults::standard()->string(daypart) == text);
    tell(stored(daypart) != u"nothing"_s);
}

void claim() {
    instance = SingleInstance::claim(u"settings"_s);
    tell(instance ? "is the one" : "ends");
    if (instance) {
        QObject::connect(instance.get(), &SingleInstance::messageReceived, instance.get(),
                         [](const QString& message) { tell(message); });
    }
}

void inherit(bool hasInput) {
    constexpr short wanted = 0x02;
    const int spare = ::dup(STDIN_FILENO);
    hasInput ? (void)::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO) : (void)::close(STDIN_FILENO);
    posix_spawn_file_actions_t actions;
    short flags = wanted;
    const int status = ChildDescriptors::inheritNothingElse(actions, flags);
    spare == -1 ? (void)0 : (void)::dup2(spare, STDIN_FILENO);
    tell(u"status %1, flags 0x%2"_s.arg(status).arg(flags, 0, 16));
}

void openPipe() {
    std::array<int, 2> ends{-1, -1};
    tell(ChildDescriptors::openPipe(ends));
    tell(::write(ends[1], "x", 1));
    for (const int end : ends) {
        tell((fcntl(end, F_GETFD) & FD_CLOEXEC) != 0);
        ::close(end);
    }
}

void openPane(const QString& pane) {
    const auto link = SystemSettings::link(static_cast<SystemSettings::Pane>(pane.toInt()));
    SystemSettings::open(link.value_or(QUrl{}));
}

#define OPENS "opens x-apple.systempreferences:com.apple."

}

const Area& systemArea() {
    static const Area area{
        "system",
        {
            {u"version"_s, [](auto& text) { world().information[u"CFBundleShortVersionString"_s] = text; }},
            {u"build"_s, [](auto& text) { world().information[u"CFBundleVersion"_s] = text; }},
            {u"number"_s, [](auto&) { world().information[u"CFBundleVersion"_s] = 7; }},
            {u"versions"_s,
             [](auto&) { tell(AppInfo::shortVersion().value_or(u"-"_s) + u' ' + AppInfo::build().value_or(u"-"_s)); }},
            {u"keep"_s, keepText},
            {u"keep-nought"_s, [](auto&) { keepText(u"a\0b"_s); }},
            {u"truth"_s, [](auto& value) { UserDefaults::standard()->setBoolean(manual, value == u"yes"_s); }},
            {u"text"_s, [](auto& value) { UserDefaults::standard()->setString(manual, value); }},
            {u"remove"_s, [](auto&) { UserDefaults::standard()->remove(daypart); }},
            {u"read"_s,
             [](auto&) {
                 tell(UserDefaults::standard()->boolean(manual));
                 tell(UserDefaults::standard()->string(daypart).value_or(u"-"_s));
             }},
            {u"stored"_s, [](auto&) { tell(stored(daypart) + u", "_s + stored(manual)); }},
            {u"pane"_s, openPane},
            {u"claim"_s, [](auto&) { claim(); }},
            {u"other"_s, [](auto&) { world().otherRuns = true; }},
            {u"starting"_s, [](auto&) { world().otherHasLaunched = false; }},
            {u"silent"_s, [](auto&) { world().answersLater = true; }},
            {u"bundleless"_s, [](auto&) { world().bundle.reset(); }},
            {u"late"_s, [](auto&) { world().hasLaunched = true; }},
            {u"reopen"_s, [](auto&) { reopen(); }},
            {u"end"_s, [](auto&) { instance.reset(); }},
            {u"pipe"_s, [](auto&) { openPipe(); }},
            {u"inherit"_s, [](auto& input) { inherit(input == u"input"_s); }},
        },
        {
            {"version and build are those of the bundle", "version 1.2.3; build 45; versions", "1.2.3 45"},
            {"what the bundle does not say, or not as a text, is absent", "number; versions", "- -"},
            {"texts are kept under their key, unit by unit", "keep dusk; keep ; keep Grüße 😀; keep-nought",
             "true; true; true; true; true; true; true; true"},
            {"truths are kept under their key", "truth yes; read; stored; truth no; read; stored; truth yes; read",
             "true; -; nothing, number 1; false; -; nothing, number 0; true; -"},
            {"what is missing or no truth is false", "read; text dusk; read", "false; -; false; -"},
            {"what is removed is gone, and nothing else", "keep dusk; truth yes; remove; stored",
             "true; true; nothing, number 1"},
            {"every pane has its link, which is opened", "pane 0; pane 1; pane 2; pane 3; pane 4",
             OPENS "Notifications-Settings.extension; " OPENS "preference.security?Privacy_Accessibility; " OPENS
                   "preference.security?Privacy_Automation; " OPENS "preference.security?Privacy_AllFiles; " OPENS
                   "preference.security?Privacy_DevTools"},
            {"a start beside no other is the one", "claim", "is the one"},
            {"a start beside a running one opens that one and ends", "other; claim", "opens file:///other.app; ends"},
            {"also where the system says nothing", "other; silent; claim; answer", "opens file:///other.app; ends"},
            {"of two that start at once both go on", "other; starting; claim", "is the one"},
            {"without a bundle there is no other", "other; bundleless; claim", "is the one"},
            {"opening it again shows the panel, once it has launched", "claim; reopen; launched; reopen",
             "is the one; nobody hears of it; panel"},
            {"opening it again shows the panel also where it was made late", "late; claim; reopen",
             "is the one; panel"},
            {"nobody listens after the instance is gone", "claim; launched; end; reopen; launched; reopen",
             "is the one; nobody hears of it; nobody hears of it"},
            {"no child inherits a pipe", "pipe", "0; 1; true; true"},
            {"children inherit standard input and nothing else", "inherit input", "inherits 0; status 0, flags 0x4002"},
            {"without standard input children inherit nothing", "inherit none", "status 0, flags 0x4002"},
        },
        [] { clearStored({daypart, manual}); },
        [] {
            instance.reset();
            clearStored({daypart, manual});
        }};
    return area;
}
