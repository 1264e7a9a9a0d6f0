#include "support/ObservableObject.h"
#include "support/Published.h"
#include "ui/kit/View.h"

#include <QTest>

namespace {

class Model final : public ObservableObject {
public:
    Published<int> value{*this, 0};
};

class CountingView final : public View {
public:
    explicit CountingView(Model& model, QWidget* parent = nullptr)
        : View{parent}
        , m_model{model} {
        observe(model);
    }
    int renders = 0;
    int shown = -1;

protected:
    void render() override {
        ++renders;
        shown = m_model.value;
    }

private:
    Model& m_model;
};

}

class TestView final : public QObject {
    Q_OBJECT

private slots:
    void rendersOnceForManyWritesInOneTurn() {
        Model model;
        CountingView view{model};
        view.show();
        QCOMPARE(view.renders, 1);
        for (int i = 1; i <= 18; ++i) {
            model.value = i;
        }
        QCOMPARE(view.renders, 1);
        QCoreApplication::processEvents();
        QCOMPARE(view.renders, 2);
        QCOMPARE(view.shown, 18);
    }

    void rendersWhatIsHiddenWhenItIsShown() {
        Model model;
        CountingView view{model};
        model.value = 1;
        QCoreApplication::processEvents();
        QCOMPARE(view.renders, 0);
        view.show();
        QCOMPARE(view.shown, 1);
        model.value = 2;
        view.hide();
        QCoreApplication::processEvents();
        QCOMPARE(view.renders, 1);
        view.show();
        QCOMPARE(view.renders, 2);
        QCOMPARE(view.shown, 2);
    }

    void rendersAllThatIsPendingBelowItBeforeItIsShown() {
        Model model;
        CountingView outer{model};
        CountingView inner{model, &outer};
        model.value = 1;
        outer.renderPending();
        QCOMPARE(outer.shown, 1);
        QCOMPARE(inner.shown, 1);
        outer.show();
        QCOMPARE(inner.renders, 1);
    }
};

QTEST_MAIN(TestView)
#include "TestView.moc"
