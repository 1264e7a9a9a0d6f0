#pragma once

#include <QWidget>

class FormSection;
class QVBoxLayout;
class ScrollPage;

/// A form of sections, one below the other, that scrolls. It does not grow wider than lines can well be read.
class GroupedForm final : public QWidget {
    Q_OBJECT

public:
    explicit GroupedForm(const QString& name, QWidget* parent = nullptr);

    FormSection& addSection(const QString& heading = {});

    /// Gives everything its place at once after texts or rows changed.
    void layOutNow();

private:
    ScrollPage* m_page;
};
