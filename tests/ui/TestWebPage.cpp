#include "ui/WebPage.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestWebPage final : public QObject {
    Q_OBJECT

private slots:
    void handsOverOnlyWhatIsAnAddress_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<QUrl>>("opened");
        const QList<QUrl> nothing;
        const auto page = u"https://vorna.localhost/dashboard"_s;
        QTest::newRow("an address") << page << QList<QUrl>{QUrl{page}};
        QTest::newRow("nothing") << QString{} << nothing;
        QTest::newRow("words") << u"not an address"_s << nothing;
        QTest::newRow("no scheme") << u"vorna.localhost/dashboard"_s << nothing;
        QTest::newRow("a scheme that cannot be one") << u"1https://vorna.localhost/"_s << nothing;
        QTest::newRow("a blank in the host") << u"https://vorna localhost/"_s << nothing;
        QTest::newRow("a port that is no number") << u"https://vorna.localhost:port/"_s << nothing;
        QTest::newRow("an open bracket") << u"https://[::1/"_s << nothing;
        QTest::newRow("half an escape") << u"https://vorna.localhost/%zz"_s << nothing;
    }
    void handsOverOnlyWhatIsAnAddress() {
        QFETCH(QString, text);
        QList<QUrl> opened;
        WebPage::open(text, [&opened](const QUrl& url) { opened += url; });
        QTEST(opened, "opened");
    }
};

QTEST_APPLESS_MAIN(TestWebPage)
#include "TestWebPage.moc"
