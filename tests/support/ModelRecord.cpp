#include "support/ModelRecord.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString text(bool value) {
    return value ? u"true"_s : u"false"_s;
}

QString text(const QString& value) {
    return value;
}

QString text(StatusModel::Band value) {
    return StatusModel::rawValue(value);
}

QString text(const QDateTime& value) {
    return value.toString(Qt::ISODate);
}

QString text(const QList<StatusModel::ServiceRow>& rows) {
    QStringList names;
    for (const auto& row : rows) {
        names.append(row.name);
    }
    return u'[' + names.join(u", "_s) + u']';
}

template <typename T>
QString text(const std::optional<T>& value) {
    return value ? text(*value) : u"absent"_s;
}

QString entry(const char* name, const auto& published) {
    return QString::fromLatin1(name) + u" = " + text(published.value());
}

}

ModelRecord::ModelRecord(StatusModel& model)
    : m_model{model} {
    connect(&model, &StatusModel::objectWillChange, this, [this] { m_states.append(describe(m_model)); });
}

QStringList ModelRecord::take() {
    auto states = std::exchange(m_states, {});
    states.append(describe(m_model));
    QStringList writes;
    for (qsizetype i = 1; i < states.size(); ++i) {
        const auto [before, after] = std::ranges::mismatch(states.at(i - 1), states.at(i));
        writes.append(after == states.at(i).end() ? u"nothing"_s : *after);
    }
    return writes;
}

void ModelRecord::fill(StatusModel& model) {
    model.bridgeOnline = !model.bridgeOnline;
    model.caddyBand = StatusModel::Band::red;
    model.caddyDetail = u"old caddy"_s;
    model.postgresOk = true;
    model.postgresDetail = u"old postgres"_s;
    model.hostLoad = u"old load"_s;
    model.hostMemory = u"old memory"_s;
    model.hostDisk = u"old disk"_s;
    model.hostname = u"old host"_s;
    model.services = QList<StatusModel::ServiceRow>{{u"old"_s, u"old"_s, true, u"old"_s, u"old"_s}};
    model.lastPoll = QDateTime{QDate{2000, 1, 1}, QTime{0, 0}};
    model.lastError = u"old error"_s;
}

QStringList ModelRecord::describe(const StatusModel& model) {
    return {
        entry("bridgeOnline", model.bridgeOnline),
        entry("caddyBand", model.caddyBand),
        entry("caddyDetail", model.caddyDetail),
        entry("postgresOk", model.postgresOk),
        entry("postgresDetail", model.postgresDetail),
        entry("hostLoad", model.hostLoad),
        entry("hostMemory", model.hostMemory),
        entry("hostDisk", model.hostDisk),
        entry("hostname", model.hostname),
        entry("services", model.services),
        entry("lastPoll", model.lastPoll),
        entry("lastError", model.lastError),
        entry("polling", model.polling),
        entry("cliBusy", model.cliBusy),
        entry("cliMessage", model.cliMessage),
        entry("accountLine", model.accountLine),
    };
}

#include "moc_ModelRecord.cpp"
