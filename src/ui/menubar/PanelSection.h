#pragma once

#include "ui/DaypartColours.h"
#include "ui/kit/View.h"

#include <functional>
#include <initializer_list>
#include <optional>

class Button;
class QHBoxLayout;
class QVBoxLayout;
class TextLabel;
struct ButtonStyle;
struct TextStyle;

/// One section of the panel: a padded column in the daypart's colours, on a fill of its own or on the panel's
/// background.
class PanelSection : public View {
    Q_OBJECT

public:
    PanelSection(const DaypartController& daypart, const QMargins& padding, int spacing,
                 std::optional<ColourRole> fill = {});

    [[nodiscard]] const Colours& colours() const { return m_colours; }
    [[nodiscard]] QVBoxLayout& column() const { return *m_column; }

    /// Adds to the end of the column, from where a row can take it.
    QHBoxLayout& addRow(int spacing);
    TextLabel& addText(const TextStyle& style, const QString& text = {});
    Button& addButton(const QString& title, const QString& symbolName, const ButtonStyle& style,
                      std::function<void()> action);

    /// Has `show` make the widgets show what the models hold, as a view's `render` does.
    void follow(std::initializer_list<ObservableObject*> models, std::function<void()> show);

protected:
    void render() override;
    void paintEvent(QPaintEvent* event) override;

private:
    const DaypartColours m_colours;
    const std::optional<ColourRole> m_fill;
    QVBoxLayout* m_column;
    std::function<void()> m_show = [] {};
};
