#include "platform/FontDesign.h"

#include <QFontDatabase>
#include <QStringList>

QFont inDesign(const QFont& font, FontDesign design) {
    QString family = familyOf(design);
    if (family.isEmpty() && design == FontDesign::monospaced) {
        family = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
    }
    QFont designed{font};
    if (!family.isEmpty()) {
        designed.setFamilies({family});
    }
    return designed;
}
