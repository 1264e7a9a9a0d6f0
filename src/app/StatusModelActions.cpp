#include "app/StatusModel.h"

#include "platform/NotificationService.h"
#include "support/Json.h"

#include <QPointer>
#include <QStringTokenizer>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr double actionTimeout = 120;   // seconds
constexpr double heartbeatTimeout = 20; // seconds
constexpr qsizetype maxLines = 3;
constexpr int maxSuccessLength = 180;
constexpr int maxFailureLength = 160;

struct Account {
    QLatin1StringView state;
    QStringView line;
};

constexpr std::array accounts{
    Account{"signed_in"_L1, u"Signed in · CTA hidden"},
    Account{"installed"_L1, u"Installed · sign in to hide download CTA"},
};

QString shortened(const QString& summary) {
    QStringList lines;
    for (const QStringView line : qTokenize(summary, u'\n', Qt::SkipEmptyParts)) {
        lines += line.toString();
        if (lines.size() == maxLines) {
            break;
        }
    }
    return lines.join(u" · "_s);
}

/// The first `count` characters as a person counts them. No more of the text is looked at than they need: it may be
/// millions of letters in one line.
QString firstCharacters(const QString& text, int count) {
    for (qsizetype look = 16 * count;; look *= 2) {
        const QStringView start = QStringView{text}.left(look);
        QTextBoundaryFinder finder{QTextBoundaryFinder::Grapheme, start.data(), start.size()};
        qsizetype end = 0;
        for (int i = 0; i < count && end < start.size(); ++i) {
            end = finder.toNextBoundary();
        }
        if (end < start.size() || start.size() == text.size()) {
            return text.left(end);
        }
    }
}

QString notificationBody(qint32 exitCode, const QString& shortText) {
    return exitCode == 0 ? firstCharacters(shortText, maxSuccessLength)
                         : u"Failed: " + firstCharacters(shortText, maxFailureLength);
}

/// The text at `state` below this member; nothing when there is none.
const QString* stateOf(const Json& answer, std::string_view member) {
    const Json* account = answer.member(member);
    const Json* state = account != nullptr ? account->member("state") : nullptr;
    return state != nullptr ? state->as<QString>() : nullptr;
}

QString accountLineFor(const Json& answer) {
    const QString* remote = stateOf(answer, "remote");
    const QString* state = remote != nullptr ? remote : stateOf(answer, "local");
    const auto* known = std::ranges::find_if(
        accounts, [&](const Account& account) { return state != nullptr && account.state == *state; });
    return known == accounts.end() ? u"Not signed in"_s : known->line.toString();
}

}

QCoro::Task<> StatusModel::runDeskBackup() {
    return runCLI({u"desk"_s, u"backup"_s}, u"Desk backup"_s);
}

QCoro::Task<> StatusModel::runMacSyncICloud() {
    return runCLI({u"desk"_s, u"sync"_s, u"push"_s, u"--via"_s, u"icloud"_s}, u"Mac→Mac iCloud sync"_s);
}

QCoro::Task<> StatusModel::signInFromDesktop() {
    return runCLI({u"auth"_s, u"login"_s, u"--surface"_s, u"macos"_s, u"--yes"_s}, u"vorna sign in"_s);
}

QCoro::Task<> StatusModel::runCLI(QStringList arguments, QString notifyTitle) {
    if (cliBusy) {
        co_return;
    }
    const QPointer<StatusModel> self{this};
    cliBusy = true;
    cliMessage = QString{u"vorna " + arguments.join(u' ') + u'…'};

    const auto result = co_await m_runTool(arguments, actionTimeout);
    if (!self) {
        co_return;
    }
    const QString shortText = shortened(result.summary());
    cliMessage = shortText;

    const QString body = notificationBody(result.exitCode, shortText);
    co_await m_notifications.notify(notifyTitle, body, NotificationService::freshIdentifier());
    if (self) {
        cliBusy = false;
    }
}

void StatusModel::reportAccountHeartbeat() {
    heartbeat();
}

QCoro::Task<> StatusModel::heartbeat() {
    const QPointer<StatusModel> self{this};
    const QStringList arguments{u"desktop"_s, u"heartbeat"_s, u"--json"_s};
    const auto result = co_await m_runTool(arguments, heartbeatTimeout);
    if (!self || result.exitCode != 0) {
        co_return;
    }
    const auto answer = Json::parse(result.stdOut.toUtf8());
    if (answer && answer->as<Json::Object>() != nullptr) {
        accountLine = accountLineFor(*answer);
    }
}
