#pragma once

#include "platform/Desktop.h"
#include "platform/SystemSettings.h"
#include "support/ObservableObject.h"
#include "support/Published.h"

#include <QCoro/QCoroTask>

#include <QList>
#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

class NotificationService;

/// The permissions that the platform's features may need, with their state where it can be read. It never asks for a
/// permission and never opens anything. Main thread only; the service must outlive the center.
class PermissionCenter final : public ObservableObject {
    Q_OBJECT

public:
    /// One permission, identified by `id`.
    struct Item final {
        enum class Status { granted, denied, notDetermined, unknown };

        QString id;
        QString title;
        QString detail; ///< one line on what it is for
        Status status = Status::unknown;
        std::optional<QUrl> settingsURL; ///< its pane in the desktop's settings, where there is one

        /// The text of a status, and its way back: nothing for any other text.
        [[nodiscard]] static QString rawValue(Status status);
        [[nodiscard]] static std::optional<Status> statusFromRawValue(QStringView rawValue);

        friend bool operator==(const Item&, const Item&) = default;
    };

    using TrustProbe = std::function<bool()>;
    using PaneLink = std::function<std::optional<QUrl>(SystemSettings::Pane)>;

    explicit PermissionCenter(NotificationService& notifications, TrustProbe isTrusted = Desktop::trustsAccessibility,
                              PaneLink link = SystemSettings::link, QObject* parent = nullptr);

    /// The permissions in display order; empty before the first refresh.
    Published<QList<Item>> items{*this, {}};

    /// Reads every state anew and replaces the whole list in one assignment. Never fails. Refreshes may overlap; the
    /// last to end decides.
    QCoro::Task<> refresh();

    /// Lets every refresh that is under way end without a change to the list.
    void cancelRefresh();

private:
    [[nodiscard]] QList<Item> itemsWith(Item::Status notifications) const;

    NotificationService& m_notifications;
    TrustProbe m_isTrusted;
    PaneLink m_link;
    int m_cancellations = 0;
};
