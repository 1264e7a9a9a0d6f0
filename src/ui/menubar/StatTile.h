#pragma once

#include <QWidget>

class Colours;
class TextLabel;

/// One figure with its title above it, in a bordered tile. Its size does not depend on the figure.
class StatTile final : public QWidget {
    Q_OBJECT

public:
    /// The title is shown in upper case.
    StatTile(const QString& title, const Colours& colours, QWidget* parent = nullptr);

    void display(const QString& value);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Colours& m_colours;
    TextLabel* m_value = nullptr;
};
