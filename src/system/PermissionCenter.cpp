#include "system/PermissionCenter.h"

#include "platform/NotificationService.h"
#include "support/DevelopmentDomain.h"

#include <QPointer>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Item = PermissionCenter::Item;
using Status = Item::Status;
using Authorization = NotificationService::Authorization;
using SystemSettings::Pane;

/// In the order of the states.
constexpr std::array rawValues{"granted"_L1, "denied"_L1, "notDetermined"_L1, "unknown"_L1};

/// In the order of the authorizations.
constexpr std::array shownAs{Status::notDetermined, Status::denied,  Status::granted,
                             Status::granted,       Status::granted, Status::unknown};

Status statusOf(Authorization authorization) {
    const auto index = static_cast<std::size_t>(authorization);
    return index < shownAs.size() ? shownAs[index] : Status::unknown;
}

}

QString Item::rawValue(Status status) {
    return rawValues[static_cast<std::size_t>(status)];
}

std::optional<Status> Item::statusFromRawValue(QStringView rawValue) {
    const auto* const found = std::find(rawValues.begin(), rawValues.end(), rawValue);
    return found == rawValues.end() ? std::nullopt : std::optional{static_cast<Status>(found - rawValues.begin())};
}

PermissionCenter::PermissionCenter(NotificationService& notifications, TrustProbe isTrusted, PaneLink link,
                                   QObject* parent)
    : ObservableObject{parent}
    , m_notifications{notifications}
    , m_isTrusted{std::move(isTrusted)}
    , m_link{std::move(link)} {}

QCoro::Task<> PermissionCenter::refresh() {
    const QPointer<PermissionCenter> self{this};
    const auto cancellations = m_cancellations;
    const auto authorization = co_await m_notifications.authorizationStatus();
    if (!self.isNull() && cancellations == m_cancellations) {
        items = itemsWith(statusOf(authorization));
    }
}

void PermissionCenter::cancelRefresh() {
    ++m_cancellations;
}

QList<Item> PermissionCenter::itemsWith(Status notifications) const {
    const auto accessibility = m_isTrusted() ? Status::granted : Status::unknown;
    return {
        {u"notifications"_s, u"Notifications"_s, u"WARDEN alerts, vote requests, desk events"_s, notifications,
         m_link(Pane::notifications)},
        {u"accessibility"_s, u"Accessibility"_s, u"Optional UI automation (gated features only)"_s, accessibility,
         m_link(Pane::accessibility)},
        {u"automation"_s, u"Automation (Apple Events)"_s, u"Control iTerm / Terminal when recovering desk"_s,
         Status::unknown, m_link(Pane::automation)},
        {u"full-disk"_s, u"Full Disk Access"_s, u"Optional deep read of ~/dev/logs and protected paths"_s,
         Status::unknown, m_link(Pane::fullDiskAccess)},
        {u"developer"_s, u"Developer Tools"_s, u"Xcode CLT / debugging attach for agent tooling"_s, Status::unknown,
         m_link(Pane::developerTools)},
        {u"network-local"_s, u"Local Network"_s,
         u"Talk to vorna bridge on 127.0.0.1 and "_s + DevelopmentDomain::wildcard(), Status::unknown, std::nullopt},
    };
}

#include "moc_PermissionCenter.cpp"
