#pragma once

#include "ui/kit/View.h"
#include "ui/settings/FormMetrics.h"

class QPushButton;
class QVBoxLayout;
class TextLabel;

/// A page of the settings as a grouped form: rows in rounded cards, each card under its heading, with a line between
/// each two rows that are shown. It does not grow wider than lines can well be read.
class Form : public View {
    Q_OBJECT

protected:
    /// The colours must outlive the page.
    explicit Form(const Colours& colours, QWidget* parent = nullptr);

    /// Begins a section, into which all rows go until the next one begins.
    void addSection(const QString& heading = {});

    /// A row of a label at its leading end and a value at its trailing end, with a mark before the value.
    TextLabel& addValue(const QString& label, const TextStyle& style = FormMetrics::body, QWidget* mark = nullptr);
    TextLabel& addText(const QString& text, const TextStyle& style = FormMetrics::body);
    QPushButton& addButton(const QString& title);

    /// The same for texts that the user wants to copy.
    void addCopyableValue(const QString& label, const QString& value);
    void addCopyableText(const QString& text);

    /// A row of one control, at its leading end and as wide as it wants to be. The row takes it over.
    void addControl(QWidget& control);

    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void fitWidth();
    void addPair(const QString& label, TextLabel& value, QWidget* mark = nullptr);

    const Colours& m_colours;
    QVBoxLayout* m_sections;
    QList<QVBoxLayout*> m_cards;
};
