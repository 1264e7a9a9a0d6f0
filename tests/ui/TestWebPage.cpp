#include "ui/WebPage.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestWebPage final : public QObject {
    Q_OBJECT

private slots:
    void handsOverOnlyWhatIsAnAddress_data() {
        QTest::addColumn<bool>("isAddress");
        QTest::newRow("https://vorna.localhost/dashboard") << true;
        QTest::newRow("") << false;
        QTest::newRow("not an address") << false;
        QTest::newRow("vorna.localhost/dashboard") << false;
        QTest::newRow("1https://vorna.localhost/") << false;
        QTest::newRow("https://vorna localhost/") << false;
        QTest::newRow("https://vorna.localhost:port/") << false;
        QTest::newRow("https://[::1/") << false;
        QTest::newRow("https://vorna.localhost/%zz") << false;
    }
    void handsOverOnlyWhatIsAnAddress() {
        QFETCH(bool, isAddress);
        const QString text = QString::fromLatin1(QTest::currentDataTag());
        QList<QUrl> opened;
        WebPage::open(text, [&opened](const QUrl& url) { opened += url; });
        QCOMPARE(opened, isAddress ? QList{QUrl{text}} : QList<QUrl>{});
    }
};

QTEST_APPLESS_MAIN(TestWebPage)
#include "TestWebPage.moc"
