#include "ui/WebPage.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestWebPage final : public QObject {
    Q_OBJECT

private slots:
    void handsOverOnlyWhatIsAnAddress() {
        const QString address = u"https://vorna.localhost/dashboard"_s;
        QList<QUrl> opened;
        for (const auto& text :
             {address, QString{}, u"not an address"_s, u"vorna.localhost/dashboard"_s, u"1https://vorna.localhost/"_s,
              u"https://vorna localhost/"_s, u"https://vorna.localhost:port/"_s, u"https://[::1/"_s,
              u"https://vorna.localhost/%zz"_s}) {
            WebPage::open(text, [&opened](const QUrl& url) { opened += url; });
            QCOMPARE(opened, QList{QUrl{address}});
        }
    }
};

QTEST_APPLESS_MAIN(TestWebPage)
#include "TestWebPage.moc"
