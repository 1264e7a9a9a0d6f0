#pragma once

#include "app/StatusModel.h"

#include <QStringList>

/// Every write to a status model's published state, in order, as "name = value". A write is seen at its announcement
/// and told apart by what differs at the next one, so a write that changes nothing shows as "nothing".
class ModelRecord final : public QObject {
    Q_OBJECT

public:
    explicit ModelRecord(StatusModel& model);

    /// The writes since the record began, or since this was last called.
    [[nodiscard]] QStringList take();

    /// Gives every published member a value of its own that no poll writes, so that each write is seen.
    static void fill(StatusModel& model);

    /// The published members as text, in the order of their declaration.
    [[nodiscard]] static QStringList describe(const StatusModel& model);

private:
    StatusModel& m_model;
    QList<QStringList> m_states;
};
