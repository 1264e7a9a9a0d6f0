#pragma once

#include <QWidget>

class ObservableObject;

/// A widget that shows what its models hold. It renders once after the writes of one turn of the event loop, and not at
/// all while it is hidden; it keeps no state of its own. Models must outlive it.
class View : public QWidget {
    Q_OBJECT

public:
    explicit View(QWidget* parent = nullptr);

    /// Renders now what is still to be rendered, here and in every view below: a window calls it before it is shown,
    /// so that its first frame is complete.
    void renderPending();

protected:
    void observe(ObservableObject& model);

    /// Makes the widgets show what the models hold. Idempotent; sets only what differs.
    virtual void render() = 0;

    void showEvent(QShowEvent* event) override;

private:
    void renderIfPending();

    bool m_pending = true;
};
