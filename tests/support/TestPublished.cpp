#include "support/Deferred.h"
#include "support/Published.h"

#include <QCoro/QCoroTask>

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class Owner final : public ObservableObject {
public:
    Published<int> number{*this, 1};
    Published<QString> text{*this, u"a"_s};
};

QCoro::Task<int> doubled(Deferred<int> value) {
    const int awaited = co_await value;
    co_return 2 * awaited;
}

}

class TestPublished final : public QObject {
    Q_OBJECT

private slots:
    void announcesBeforeItStores();
    void announcesAlsoWhenTheValueIsEqual();
    void readsLikeItsValue();
    void deferredValueResumesItsWaiter();
    void deferredValueMayBeThereFirst();
    void onlyTheFirstDeliveryCounts();
};

void TestPublished::announcesBeforeItStores() {
    Owner owner;
    int seen = 0;
    connect(&owner, &ObservableObject::objectWillChange, this, [&] { seen = owner.number; });
    owner.number = 2;
    QCOMPARE(seen, 1);
    QCOMPARE(owner.number.value(), 2);
}

void TestPublished::announcesAlsoWhenTheValueIsEqual() {
    Owner owner;
    const QSignalSpy announcements{&owner, &ObservableObject::objectWillChange};
    owner.number = 1;
    owner.text = u"a"_s;
    QCOMPARE(announcements.size(), 2);
}

void TestPublished::readsLikeItsValue() {
    const Owner owner;
    const QString& text = owner.text;
    QCOMPARE(owner.number + 1, 2);
    QCOMPARE(text, u"a"_s);
    QCOMPARE(owner.text->size(), 1);
}

void TestPublished::deferredValueResumesItsWaiter() {
    const Deferred<int> value;
    auto task = doubled(value);
    QVERIFY(!task.isReady());
    value.deliver(21);
    QVERIFY(task.isReady());
    QCOMPARE(QCoro::waitFor(task), 42);
}

void TestPublished::deferredValueMayBeThereFirst() {
    const Deferred<int> value;
    value.deliver(21);
    QCOMPARE(QCoro::waitFor(doubled(value)), 42);
}

void TestPublished::onlyTheFirstDeliveryCounts() {
    const Deferred<int> value;
    auto task = doubled(value);
    value.deliver(1);
    value.deliver(2);
    QCOMPARE(QCoro::waitFor(task), 2);
}

QTEST_GUILESS_MAIN(TestPublished)
#include "TestPublished.moc"
