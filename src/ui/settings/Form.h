#pragma once

#include "ui/kit/View.h"
#include "ui/settings/FormMetrics.h"

#include <functional>
#include <utility>

class QPushButton;
class QVBoxLayout;
class TextLabel;

/// A page of the settings as a grouped form: rows in rounded cards, each card under its heading, with a line between
/// each two rows that are shown. It does not grow wider than lines can well be read.
class Form final : public View {
public:
    using Text = std::function<QString()>;

    /// The colours must outlive the page.
    explicit Form(const Colours& colours);

    using View::observe;

    /// Also does this at each rendering.
    void whenRendered(std::function<void()> show) { m_renderings.append(std::move(show)); }

    /// Begins a section, into which all rows go until the next one begins.
    void addSection(const QString& heading = {});

    /// A row of a label at its leading end and a value at its trailing end, with a mark before the value. The value is
    /// asked for at each rendering.
    void addValue(const QString& label, const Text& value, const TextStyle& style = FormMetrics::body,
                  QWidget* mark = nullptr);
    TextLabel& addText(const QString& text, const TextStyle& style = FormMetrics::body);
    QPushButton& addButton(const QString& title);

    /// A text that the user wants to copy: a value where it has a label.
    void addCopyable(const QString& text, const QString& label = {});

    /// A row of one control, at its leading end and as wide as it wants to be. The row takes it over.
    void addControl(QWidget& control);

protected:
    void render() override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void fitWidth();
    void addPair(const QString& label, TextLabel& value, QWidget* mark = nullptr);

    const Colours& m_colours;
    QVBoxLayout* m_sections;
    QList<QVBoxLayout*> m_cards;
    QList<std::function<void()>> m_renderings;
};
