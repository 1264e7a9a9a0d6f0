#include "support/Published.h"

#include "support/Deferred.h"

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

QCoro::Task<> takeDouble(Deferred<int> value, int* result) {
    *result = 2 * co_await value;
}

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

    void deferredValueResumesItsWaiterOnce() {
        const Deferred<int> value;
        int result = 0;
        takeDouble(value, &result);
        QCOMPARE(result, 0);
        value.deliver(21);
        value.deliver(2);
        QCOMPARE(result, 42);
        result = 0;
        takeDouble(value, &result); // it is there already
        QCOMPARE(result, 42);
    }
};

QTEST_GUILESS_MAIN(TestPublished)
#include "TestPublished.moc"
