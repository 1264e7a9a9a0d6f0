#pragma once

#include <QTabBar>

/// The tabs at the head of the settings window, each a symbol above its title. Arrow keys walk through them.
class SettingsTabBar final : public QTabBar {
    Q_OBJECT

public:
    explicit SettingsTabBar(QWidget* parent = nullptr);

    void addTab(const QString& title, const QString& symbolName);

protected:
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    [[nodiscard]] QSize minimumTabSizeHint(int index) const override { return tabSizeHint(index); }
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QFont titleFont() const;
    void paintTab(QPainter& painter, int index) const;
};
