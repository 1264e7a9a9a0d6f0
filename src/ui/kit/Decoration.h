#pragma once

#include <QWidget>

/// A widget that only adorns: assistive programs pass it over.
class Decoration : public QWidget {
    Q_OBJECT

protected:
    explicit Decoration(QWidget* parent);
};
