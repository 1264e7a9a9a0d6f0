#include "Fuzz.h"

#include "app/StatusModel.h"
#include "cli/Utf8Text.h"
#include "support/FakeNotificationService.h"

#include <QJsonDocument>
#include <QJsonValue>
#include <QTextBoundaryFinder>
#include <QUuid>

#include <array>

using namespace Qt::StringLiterals;
using Fuzz::require;
using Result = VornaCLIRunner::Result;

namespace {

constexpr qsizetype mostLines = 3;
const QString separator = u" · "_s;
const QString failed = u"Failed: "_s;

const QString untouched = u"untouched"_s;
const QString notSignedIn = u"Not signed in"_s;
const QString installed = u"Installed · sign in to hide download CTA"_s;
const QString signedIn = u"Signed in · CTA hidden"_s;

QCoro::Task<Result> answered(Result result) {
    co_return result;
}

/// A model whose tool always ends like `result`.
struct Companion final {
    FakeNotificationService notifications;
    Result result;
    StatusModel model{notifications, [this](const QStringList&, double) { return answered(result); }};
};

Companion& companionAfter(const Result& result) {
    static Companion companion;
    companion.result = result;
    companion.notifications.posted.clear();
    return companion;
}

/// The account line after the tool has said this.
QString lineAfter(qint32 exitCode, const QString& output) {
    auto& model = companionAfter({.exitCode = exitCode, .stdOut = output, .stdErr = {}}).model;
    model.accountLine = untouched;
    model.reportAccountHeartbeat();
    return model.accountLine.value();
}

QString expectedLine(const QJsonDocument& answer) {
    const auto remote = answer["remote"_L1]["state"_L1];
    const auto state = remote.isString() ? remote : answer["local"_L1]["state"_L1];
    return state == "signed_in"_L1 ? signedIn : state == "installed"_L1 ? installed : notSignedIn;
}

/// The text of these bytes, which is none exactly when decoding them leaves marks in place of what is wrong.
std::optional<QString> decoded(QByteArrayView bytes) {
    Utf8Text atOnce;
    atOnce.append(bytes);
    const auto text = atOnce.whole();
    Utf8Text inPieces;
    std::ranges::for_each(bytes, [&](const char& byte) { inPieces.append({&byte, 1}); });
    require(inPieces.whole() == text);
    const QByteArray guarded = 'x' + bytes.toByteArray();
    require(text.has_value() == (QString::fromUtf8(guarded).toUtf8() == guarded));
    require(!text || text->toUtf8() == bytes);
    return text;
}

void requireSummary(const Result& result) {
    const QString summary = result.summary();
    require(!summary.isEmpty() && !summary.front().isSpace() && !summary.back().isSpace());
    const QString standIn = result.exitCode == 0 ? u"ok"_s : u"exit "_s + QString::number(result.exitCode);
    const std::array texts{result.stdOut.trimmed(), result.stdErr.trimmed(), standIn};
    require(summary == *std::ranges::find_if(texts, [](const QString& text) { return !text.isEmpty(); }));
}

void requireMessage(const QString& message, const QString& summary) {
    QString rest = message;
    qsizetype lines = 0;
    for (const auto& line : QStringView{summary}.split(u'\n')) {
        if (line.isEmpty() || lines == mostLines) {
            continue;
        }
        require(rest.startsWith(lines == 0 ? line.toString() : separator + line));
        rest.remove(0, line.size() + (lines == 0 ? 0 : separator.size()));
        ++lines;
    }
    require(lines > 0 && rest.isEmpty() && !message.contains(u'\n'));
}

/// The text is the message's beginning of at most that many characters, none of which is cut.
void requireBeginning(const QString& text, const QString& message, int mostCharacters) {
    require(message.startsWith(text) && text.isValidUtf16() == message.left(text.size()).isValidUtf16());
    QTextBoundaryFinder finder{QTextBoundaryFinder::Grapheme, message};
    int characters = 0;
    while (finder.position() < text.size()) {
        require(finder.toNextBoundary() > 0);
        ++characters;
    }
    require(finder.position() == text.size());
    require(text == message ? characters <= mostCharacters : characters == mostCharacters);
    require(!message.isValidUtf16() || text.isValidUtf16());
}

void requireNotification(const FakeNotificationService::Request& notification, const QString& message,
                         qint32 exitCode) {
    require(notification.title == u"Desk backup"_s && !QUuid{notification.identifier}.isNull());
    require(exitCode == 0 || notification.body.startsWith(failed));
    requireBeginning(exitCode == 0 ? notification.body : notification.body.mid(failed.size()), message,
                     exitCode == 0 ? 180 : 160);
}

}

/// The input is what the tool prints when it is asked for the account state.
void Fuzz::account(const QByteArray& input) {
    const auto output = decoded(input);
    const QString line = lineAfter(0, output.value_or(QString{}));
    require(lineAfter(0, output.value_or(QString{})) == line);
    require(lineAfter(1, output.value_or(QString{})) == untouched);
    // Qt takes more than JSON, leaves out byte order marks and keeps half surrogate pairs; what it writes is JSON.
    const auto answer = QJsonDocument::fromJson(input);
    const bool mayUnderflow = input.contains("e-") || input.contains("E-") || input.contains("0.0");
    require(line == untouched || answer.isObject() || mayUnderflow); // such as 1e-328, which Qt refuses
    if (output && answer.isObject() && !input.contains("\xEF\xBB\xBF") && !input.contains("\\u")) {
        require(line == untouched || line == expectedLine(answer));
        require(lineAfter(0, QString::fromUtf8(answer.toJson())) == expectedLine(answer));
    }
}

/// The input is the exit code, one byte counted from '0', what the tool prints, a zero byte and what it complains.
void Fuzz::tool(const QByteArray& input) {
    if (input.isEmpty()) {
        return;
    }
    const QByteArrayView printed = QByteArrayView{input}.sliced(1);
    const qsizetype end = printed.isEmpty() ? -1 : printed.lastIndexOf('\0');
    const Result result{
        .exitCode = input.front() - '0',
        .stdOut = decoded(end < 0 ? printed : printed.first(end)).value_or(QString{}),
        .stdErr = decoded(end < 0 ? QByteArrayView{} : printed.sliced(end + 1)).value_or(QString{}),
    };
    requireSummary(result);
    auto& [notifications, answer, model] = companionAfter(result);
    model.runDeskBackup();
    require(!model.cliBusy && model.cliMessage.value() && notifications.posted.size() == 1);
    requireMessage(*model.cliMessage.value(), result.summary());
    requireNotification(notifications.posted.first(), *model.cliMessage.value(), result.exitCode);
}
