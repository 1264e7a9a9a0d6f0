#include "support/Published.h"

#include "support/Deferred.h"

#include <QSignalSpy>
#include <QTest>

#include <coroutine>
#include <exception>

using namespace Qt::StringLiterals;

namespace {

class Owner final : public ObservableObject {
public:
    Published<int> number{*this, 1};
    Published<QString> text{*this, u"a"_s};
};

/// Awaits one value and keeps its double; starts at once and ends by itself.
struct Doubled final {
    struct promise_type {
        Doubled get_return_object() { return {}; }
        std::suspend_never initial_suspend() noexcept { return {}; }
        std::suspend_never final_suspend() noexcept { return {}; }
        void return_void() {}
        void unhandled_exception() { std::terminate(); }
    };

    static Doubled start(Deferred<int> value, int& result) { result = 2 * co_await value; }
};

}

class TestPublished final : public QObject {
    Q_OBJECT

private slots:
    void announcesBeforeItStores() {
        Owner owner;
        int seen = 0;
        connect(&owner, &ObservableObject::objectWillChange, this, [&] { seen = owner.number; });
        owner.number = 2;
        QCOMPARE(seen, 1);
        QCOMPARE(owner.number.value(), 2);
    }

    void announcesAlsoWhenTheValueIsEqual() {
        Owner owner;
        const QSignalSpy announcements{&owner, &ObservableObject::objectWillChange};
        owner.number = 1;
        owner.text = u"a"_s;
        QCOMPARE(announcements.size(), 2);
    }

    void changeIsToldOnceATurn() {
        Owner owner;
        QStringList seen;
        connect(&owner, &ObservableObject::changed, this, [&] { seen.append(owner.text); });
        owner.number = 2;
        owner.text = u"b"_s;
        QCOMPARE(seen, QStringList{});
        QCoreApplication::processEvents();
        QCOMPARE(seen, QStringList{u"b"_s});
        owner.text = u"c"_s;
        QCoreApplication::processEvents();
        QCOMPARE(seen, (QStringList{u"b"_s, u"c"_s}));
    }

    void readsLikeItsValue() {
        const Owner owner;
        const QString& text = owner.text;
        QCOMPARE(owner.number + 1, 2);
        QCOMPARE(text, u"a"_s);
        QCOMPARE(owner.text->size(), 1);
    }

    void deferredValueResumesItsWaiter() {
        const Deferred<int> value;
        int result = 0;
        Doubled::start(value, result);
        QCOMPARE(result, 0);
        value.deliver(21);
        QCOMPARE(result, 42);
    }

    void deferredValueMayBeThereFirst() {
        const Deferred<int> value;
        value.deliver(21);
        int result = 0;
        Doubled::start(value, result);
        QCOMPARE(result, 42);
    }

    void onlyTheFirstDeliveryCounts() {
        const Deferred<int> value;
        int result = 0;
        Doubled::start(value, result);
        value.deliver(1);
        value.deliver(2);
        QCOMPARE(result, 2);
    }
};

QTEST_GUILESS_MAIN(TestPublished)
#include "TestPublished.moc"
