#include "ui/WebPage.h"

void WebPage::open(const QString& address, const Opener& opener) {
    const QUrl url{address, QUrl::StrictMode};
    if (url.isValid() && !url.scheme().isEmpty()) {
        opener(url);
    }
}
