#include "Cases.h"
#include "platform/NotificationService.h"

using namespace Qt::StringLiterals;
using namespace Doubles;

namespace {

using Authorization = NotificationService::Authorization;

std::unique_ptr<NotificationService> service;

void askAll() {
    service->requestAuthorization().then([](bool granted) { tell(granted ? "granted" : "refused"); });
    service->authorizationStatus().then([](Authorization status) { tell(static_cast<int>(status)); });
    service->notify(u"Grüße 😀"_s, u"a \"body\"\n<b>"_s, u"AB-12"_s).then([] { tell("posted"); });
}

#define POSTED "title Grüße 😀; body a \"body\"\n<b>; default sound; at once AB-12"
#define ASKED "asks for 7; " POSTED

}

const Area& notificationArea() {
    static const Area area{
        "notifications",
        {
            {u"make"_s, [](auto&) { service = NotificationService::standard(); }},
            {u"end"_s, [](auto&) { service.reset(); }},
            {u"ask"_s, [](auto&) { askAll(); }},
            {u"status"_s, [](auto& status) { world().authorizationStatus = status.toInt(); }},
            {u"refuse"_s, [](auto&) { world().grantsNotifications = false; }},
            {u"later"_s, [](auto&) { world().answersLater = true; }},
            {u"present"_s, [](auto&) { presentNotification(); }},
            {u"bundle"_s,
             [](auto& is) { is == u"none"_s ? world().bundle.reset() : (void)(world().bundleIsKnown = false); }},
            {u"then"_s,
             [](auto& what) {
                 service->authorizationStatus().then([what](Authorization status) {
                     what == u"end"_s ? service.reset() : what == u"ask"_s ? askAll() : tell(static_cast<int>(status));
                 });
             }},
        },
        {
            {"it asks for badge, sound and alert, posts what it was given, and answers on the main thread, a turn "
             "later",
             "make; status 2; ask; say asked; turn", ASKED "; asked; granted; 2; posted"},
            {"it may be refused", "make; refuse; ask; turn", ASKED "; refused; 0; posted"},
            {"every status has its number, in the order of the names, also one of the future",
             "make; status -1; then tell; status 0; then tell; status 1; then tell; status 2; then tell; status 3; "
             "then tell; status 4; then tell; status 5; then tell; turn",
             "5; 0; 1; 2; 3; 4; 5"},
            {"answers go to those who asked, when they come", "make; later; ask; turn; say answered; answer; turn",
             ASKED "; answered; granted; 0; posted"},
            {"who waits goes on once the service is gone, and no answer comes later",
             "make; later; status 2; ask; say gone; end; answer; turn", ASKED "; gone; refused; 0; posted"},
            {"the service may go in its own answer", "make; then end; turn; say gone", "gone"},
            {"it may be asked again in its own answer", "make; then ask; turn; turn", ASKED "; granted; 0; posted"},
            {"while in front banner, list and sound are presented", "make; present", "presented as 26"},
            {"it leaves no delegate behind", "make; end; present", "not presented"},
            {"without a bundle it is not asked, and answers at once", "bundle none; make; ask",
             "refused; 0; " POSTED "; posted"},
            {"a bundle that the system does not know is answered at once", "bundle unknown; make; ask",
             "raised; refused; 0; " POSTED "; posted"},
        },
        [] {},
        [] { service.reset(); }};
    return area;
}
