#include "Fuzz.h"

#include "app/StatusModel.h"
#include "cli/Utf8Text.h"
#include "support/FakeNotificationCenter.h"
#include "system/NotificationService.h"

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

QCoro::Task<Result> answered(Result result) {
    co_return result;
}

struct Shown final {
    QString message;
    NotificationCenter::Request notification;
};

/// What a user sees of an action that ended like this.
Shown shown(const Result& toolResult) {
    static FakeNotificationCenter center;
    static NotificationService notifications{center};
    static Result result;
    static StatusModel model{notifications, [](const QStringList&, double) { return answered(result); }};
    result = toolResult;
    center.posted.clear();
    model.runDeskBackup();
    require(!model.cliBusy && model.cliMessage.value() && center.posted.size() == 1);
    return {*model.cliMessage.value(), center.posted.first()};
}

/// The text of these bytes, which is none exactly when decoding them leaves marks in place of what is wrong.
QString decoded(QByteArrayView bytes) {
    Utf8Text atOnce;
    atOnce.append(bytes);
    const auto text = atOnce.whole();
    Utf8Text inPieces;
    std::ranges::for_each(bytes, [&](const char& byte) { inPieces.append({&byte, 1}); });
    require(inPieces.whole() == text);
    const QByteArray guarded = 'x' + bytes.toByteArray();
    require(text.has_value() == (QString::fromUtf8(guarded).toUtf8() == guarded));
    require(!text || text->toUtf8() == bytes);
    return text.value_or(QString{});
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

void requireNotification(const NotificationCenter::Request& notification, const QString& message, qint32 exitCode) {
    require(notification.title == u"Desk backup"_s && !QUuid{notification.identifier}.isNull());
    require(exitCode == 0 || notification.body.startsWith(failed));
    requireBeginning(exitCode == 0 ? notification.body : notification.body.mid(failed.size()), message,
                     exitCode == 0 ? 180 : 160);
}

}

/// The input is the exit code, one byte counted from '0', what the tool prints, a zero byte and what it complains.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const auto input = Fuzz::view(data, size);
    const QByteArrayView printed = QByteArrayView{input}.sliced(1);
    const qsizetype end = printed.isEmpty() ? -1 : printed.lastIndexOf('\0');
    const qint32 exitCode = input.front() - '0';
    const Result result{
        .exitCode = exitCode,
        .stdOut = decoded(end < 0 ? printed : printed.first(end)),
        .stdErr = decoded(end < 0 ? QByteArrayView{} : printed.sliced(end + 1)),
    };
    requireSummary(result);
    const auto [message, notification] = shown(result);
    requireMessage(message, result.summary());
    requireNotification(notification, message, exitCode);
    return 0;
}
