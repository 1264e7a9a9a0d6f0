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

auto withInformation(const QVariantMap& information) {
    return [=] {
        world().information = information;
        tell(AppInfo::shortVersion().value_or(u"-"_s));
        tell(AppInfo::build().value_or(u"-"_s));
    };
}

auto withDefaults(std::function<void(UserDefaults&)> happens) {
    return [happens = std::move(happens)] {
        clearStored({daypart, manual});
        happens(*UserDefaults::standard());
        clearStored({daypart, manual});
    };
}

auto keepText(const QString& text) {
    return withDefaults([=](UserDefaults& defaults) {
        defaults.setString(daypart, text);
        tell(UserDefaults::standard()->string(daypart) == text);
        tell(stored(daypart) != u"nothing"_s);
        tell(stored(manual));
    });
}

void claim() {
    tell(SingleInstance::claim(u"settings"_s) ? "is the one" : "ends");
    answerAll();
}

auto claimBesideAnother(bool hasLaunched, bool answersLater, bool hasBundle) {
    return [=] {
        world().otherRuns = true;
        world().otherHasLaunched = hasLaunched;
        world().answersLater = answersLater;
        world().bundle = hasBundle ? world().bundle : std::nullopt;
        claim();
    };
}

auto withInstance(bool hasLaunched, std::function<void(std::unique_ptr<SingleInstance>&)> happens) {
    return [=] {
        world().hasLaunched = hasLaunched;
        auto instance = SingleInstance::claim(u"settings"_s);
        QObject::connect(instance.get(), &SingleInstance::messageReceived, instance.get(),
                         [](const QString& message) { tell(message); });
        happens(instance);
        reopen();
    };
}

auto inherit(bool hasInput) {
    return [=] {
        constexpr short wanted = 0x02;
        const int spare = ::dup(STDIN_FILENO);
        hasInput ? (void)::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO) : (void)::close(STDIN_FILENO);
        posix_spawn_file_actions_t actions;
        short flags = wanted;
        const int status = ChildDescriptors::inheritNothingElse(actions, flags);
        spare == -1 ? (void)0 : (void)::dup2(spare, STDIN_FILENO);
        tell(u"status %1, flags 0x%2"_s.arg(status).arg(flags, 0, 16));
    };
}

void open(SystemSettings::Pane pane) {
    SystemSettings::open(SystemSettings::link(pane).value_or(QUrl{}));
}

}

const QList<Case> systemCases{
    {"version and build are those of the bundle",
     withInformation({{u"CFBundleShortVersionString"_s, u"1.2.3"_s}, {u"CFBundleVersion"_s, u"45"_s}}), "1.2.3; 45"},
    {"what the bundle does not say, or not as a text, is absent", withInformation({{u"CFBundleVersion"_s, 7}}), "-; -"},
    {"it says what it runs on",
     [] {
         for (const QString& text : {AppInfo::name(), AppInfo::architecture(), AppInfo::requirement()}) {
             tell(text);
         }
     },
     "vorna for Mac; arm64 · Apple Silicon; Apple Silicon only. "},
    {"a text is kept", keepText(u"dusk"_s), "true; true; nothing"},
    {"an empty text is kept", keepText(u""_s), "true; true; nothing"},
    {"accents and a smile are kept", keepText(u"Grüße 😀"_s), "true; true; nothing"},
    {"a nought inside is kept", keepText(u"a\0b"_s), "true; true; nothing"},
    {"truths are kept under their key", withDefaults([](UserDefaults& defaults) {
         for (const bool value : {true, false, true}) {
             defaults.setBoolean(manual, value);
             tell(defaults.boolean(manual));
             tell(stored(manual));
         }
         tell(stored(daypart));
     }),
     "true; number 1; false; number 0; true; number 1; nothing"},
    {"what is missing or no truth is false", withDefaults([](UserDefaults& defaults) {
         tell(defaults.boolean(manual));
         defaults.setString(manual, u"dusk"_s);
         tell(defaults.boolean(manual));
         tell(defaults.string(daypart).value_or(u"-"_s));
     }),
     "false; false; -"},
    {"what is removed is gone, and nothing else", withDefaults([](UserDefaults& defaults) {
         defaults.setString(daypart, u"dusk"_s);
         defaults.setBoolean(manual, true);
         defaults.remove(daypart);
         tell(stored(daypart));
         tell(stored(manual));
     }),
     "nothing; number 1"},
    {"every pane has its link, which is opened",
     [] {
         using enum SystemSettings::Pane;
         for (const auto pane : {notifications, accessibility, automation, fullDiskAccess, developerTools}) {
             open(pane);
         }
     },
     "opens x-apple.systempreferences:com.apple.Notifications-Settings.extension; "
     "opens x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility; "
     "opens x-apple.systempreferences:com.apple.preference.security?Privacy_Automation; "
     "opens x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles; "
     "opens x-apple.systempreferences:com.apple.preference.security?Privacy_DevTools"},
    {"a start beside no other is the one", [] { claim(); }, "is the one"},
    {"a start beside a running one opens that one and ends", claimBesideAnother(true, false, true),
     "opens file:///other.app; ends"},
    {"also where the system says nothing", claimBesideAnother(true, true, true), "opens file:///other.app; ends"},
    {"of two that start at once both go on", claimBesideAnother(false, false, true), "is the one"},
    {"without a bundle there is no other", claimBesideAnother(true, false, false), "is the one"},
    {"opening it again shows the panel, once it has launched",
     withInstance(false,
                  [](auto&) {
                      reopen();
                      finishLaunching();
                  }),
     "nobody hears of it; panel"},
    {"opening it again shows the panel also where it was made late", withInstance(true, [](auto&) {}), "panel"},
    {"nobody listens after the instance is gone",
     withInstance(false,
                  [](auto& instance) {
                      finishLaunching();
                      instance.reset();
                      finishLaunching();
                  }),
     "nobody hears of it"},
    {"no child inherits a pipe",
     [] {
         std::array<int, 2> ends{-1, -1};
         tell(ChildDescriptors::openPipe(ends));
         tell(::write(ends[1], "x", 1));
         for (const int end : ends) {
             tell((fcntl(end, F_GETFD) & FD_CLOEXEC) != 0);
             ::close(end);
         }
     },
     "0; 1; true; true"},
    {"children inherit standard input and nothing else", inherit(true), "inherits 0; status 0, flags 0x4002"},
    {"without standard input children inherit nothing", inherit(false), "status 0, flags 0x4002"},
};
