#pragma once

#include <QObject>
#include <QRect>
#include <QString>

#include <memory>

/// The companion's item in the menu bar or the system tray. It may be created before there is a place for it: it shows
/// itself when one appears, and again when that place comes back after it was gone. Main thread only.
class StatusItem : public QObject {
    Q_OBJECT

public:
    static constexpr QStringView showPanelText = u"Show panel";
    static constexpr QStringView settingsText = u"Settings…";
    static constexpr QStringView quitText = u"Quit %1"; ///< %1 is the title

    [[nodiscard]] static std::unique_ptr<StatusItem> create(const QString& title);

    /// The symbol to show, and what it means, for those who hear or hover it. Does nothing when both are unchanged.
    virtual void setSymbol(const QString& symbolName, const QString& meaning) = 0;

    /// Whether the panel is open: the item then looks pressed, and reports `clickedElsewhere()`, where the desktop lets
    /// it do either.
    virtual void setPanelOpen(bool isOpen) { (void)isOpen; }

    /// Where the item is, in points on the virtual desktop; where the desktop does not tell, the pointer's position
    /// with an empty size.
    [[nodiscard]] virtual QRect anchor() const = 0;

signals:
    /// The item was clicked.
    void clicked();

    /// An entry of the item's menu was chosen.
    void showPanelChosen();
    void settingsChosen();
    void quitChosen();

    /// The user pressed a mouse button outside this program's windows (only where the desktop tells).
    void clickedElsewhere();
};
