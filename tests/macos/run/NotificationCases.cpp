#include "Cases.h"
#include "platform/NotificationCenter.h"

#include <memory>

using namespace Qt::StringLiterals;
using namespace Doubles;

namespace {

using Authorization = NotificationCenter::Authorization;

const NotificationCenter::Request request{
    .title = u"Grüße 😀"_s, .body = u"a \"body\"\n<b>"_s, .identifier = u"AB-12"_s};

void askAll(NotificationCenter& center) {
    center.requestAuthorization().then([](bool granted) { tell(granted ? "granted" : "refused"); });
    center.authorization().then([](Authorization status) { tell(u"status %1"_s.arg(static_cast<int>(status))); });
    center.post(request).then([] { tell("posted"); });
}

/// With a center that answers as soon as it can.
auto withCenter(std::function<void(NotificationCenter&)> happens) {
    return [happens = std::move(happens)] {
        const auto center = NotificationCenter::standard();
        happens(*center);
        turn();
    };
}

auto askWithoutOne(bool bundleIsThere) {
    return [=] {
        world().bundle = bundleIsThere ? world().bundle : std::nullopt;
        world().bundleIsKnown = false;
        askAll(*NotificationCenter::standard());
    };
}

#define ASKED_FOR "asks for 7; title Grüße 😀; body a \"body\"\n<b>; default sound; at once AB-12"

}

const QList<Case> notificationCases{
    {"it asks for badge, sound and alert, posts what it was given, and answers on the main thread, a turn later",
     withCenter([](NotificationCenter& center) {
         world().authorizationStatus = 2;
         askAll(center);
         tell("asked");
     }),
     ASKED_FOR "; asked; granted; status 2; posted"},
    {"it may be refused", withCenter([](NotificationCenter& center) {
         world().grantsNotifications = false;
         askAll(center);
     }),
     ASKED_FOR "; refused; status 0; posted"},
    {"every status has its name, also one of the future", withCenter([](NotificationCenter& center) {
         using enum Authorization;
         const QList expected{unrecognized, notDetermined, denied, authorized, provisional, ephemeral, unrecognized};
         for (int status = -1; status <= 5; ++status) {
             world().authorizationStatus = status;
             center.authorization().then([=](Authorization found) { tell(found == expected[status + 1]); });
         }
     }),
     "true; true; true; true; true; true; true"},
    {"answers go to those who asked, when they come", withCenter([](NotificationCenter& center) {
         world().answersLater = true;
         askAll(center);
         turn();
         tell("answered");
         answerAll();
     }),
     ASKED_FOR "; answered; granted; status 0; posted"},
    {"who waits goes on once the center is gone, and no answer comes later",
     [] {
         world().answersLater = true;
         world().authorizationStatus = 2;
         auto center = NotificationCenter::standard();
         askAll(*center);
         tell("gone");
         center.reset();
         answerAll();
         turn();
     },
     ASKED_FOR "; gone; refused; status 0; posted"},
    {"the center may go in its own answer",
     [] {
         auto center = NotificationCenter::standard();
         center->authorization().then([&center](Authorization) {
             center.reset();
             tell("gone");
         });
         turn();
     },
     "gone"},
    {"it may be asked again in its own answer", withCenter([](NotificationCenter& center) {
         center.authorization().then([&center](Authorization) { askAll(center); });
         turn();
         turn();
     }),
     ASKED_FOR "; granted; status 0; posted"},
    {"while in front banner, list and sound are presented", withCenter([](auto&) { presentNotification(); }),
     "presented as 26"},
    {"it leaves no delegate behind",
     [] {
         NotificationCenter::standard().reset();
         presentNotification();
     },
     "not presented"},
    {"without a bundle it is not asked, and answers at once", askWithoutOne(false),
     "refused; status 0; title Grüße 😀; body a \"body\"\n<b>; default sound; at once AB-12; posted"},
    {"a bundle that the system does not know is answered at once", askWithoutOne(true),
     "raised; refused; status 0; title Grüße 😀; body a \"body\"\n<b>; default sound; at once AB-12; posted"},
};
