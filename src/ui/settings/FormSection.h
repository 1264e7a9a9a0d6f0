#pragma once

#include "ui/settings/FormText.h"

#include <QWidget>

class FormButton;
class FormGroup;

/// A heading and a group of rows, in the order in which they are added.
class FormSection final : public QWidget {
    Q_OBJECT

public:
    /// Without a heading when it is empty.
    explicit FormSection(const QString& heading, QWidget* parent = nullptr);

    void addRow(QWidget& row);

    /// A row of a label at its leading end and a value at its trailing end.
    FormText& addValue(const QString& label, FormText& value, QWidget* mark = nullptr);
    FormText& addValue(const QString& label, const QString& value, FormText::Style style = FormText::Style::body);

    FormText& addText(const QString& text, FormText::Style style = FormText::Style::body);
    FormButton& addButton(const QString& title);

private:
    FormGroup* m_group;
};
