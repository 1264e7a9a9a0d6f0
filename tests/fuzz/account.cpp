#include "Fuzz.h"
#include "JsonMutator.h"

#include "app/StatusModel.h"
#include "cli/Utf8Text.h"
#include "support/FakeNotificationCenter.h"
#include "system/NotificationService.h"

#include <QJsonDocument>

#include <array>

using namespace Qt::StringLiterals;
using Fuzz::require;
using Result = VornaCLIRunner::Result;

namespace {

const QString untouched = u"untouched"_s;
const QString notSignedIn = u"Not signed in"_s;
const QString installed = u"Installed · sign in to hide download CTA"_s;
const QString signedIn = u"Signed in · CTA hidden"_s;

QCoro::Task<Result> answered(Result result) {
    co_return result;
}

/// The account line after the tool has said this.
QString lineAfter(qint32 exitCode, const QString& output) {
    static FakeNotificationCenter center;
    static NotificationService notifications{center};
    static Result result;
    static StatusModel model{notifications, [](const QStringList&, double) { return answered(result); }};
    result = {.exitCode = exitCode, .stdOut = output, .stdErr = {}};
    model.accountLine = untouched;
    model.reportAccountHeartbeat();
    return model.accountLine.value();
}

QString expectedLine(const QJsonDocument& answer) {
    const auto remote = answer["remote"_L1]["state"_L1];
    const auto state = remote.isString() ? remote : answer["local"_L1]["state"_L1];
    return state == "signed_in"_L1 ? signedIn : state == "installed"_L1 ? installed : notSignedIn;
}

}

/// The input is what the tool prints when it is asked for the account state.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = Fuzz::view(data, size);
    Utf8Text text;
    text.append(input);
    const auto output = text.whole();
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
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t most, unsigned seed) {
    return mutateJson(data, size, most, seed);
}
