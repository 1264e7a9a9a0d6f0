"""The companion on KDE Plasma."""

import plasma
from companion import PANEL
from shell import still
from stories import WIDTH_OF_ITEM, Stories

MENU_ENTRIES_FROM_BELOW = {"Show panel": 68}
MENU_HEIGHT = 80


class OnPlasma(Stories):
    def click_item(self):
        self.click_item_once()

    def choose(self, label):
        """By the menu that the tray shows above the item."""
        x, y = self.place_of_item()
        bottom = self.desk.work_area()[3]

        def pixels():
            return self.desk.pixels(x, bottom - MENU_HEIGHT, WIDTH_OF_ITEM, MENU_HEIGHT)

        before = pixels()
        self.desk.click(x, y, button=3)
        self.wait_for(lambda: pixels() != before and still(pixels), "the menu")
        self.desk.click(x + WIDTH_OF_ITEM, bottom - MENU_ENTRIES_FROM_BELOW[label])

    def test_notification_is_seen_beside_the_open_panel(self):
        place = self.open_panel()
        before = self.desk.pixels(*place)
        self.reader.press("Test notification", PANEL)
        self.wait_for(lambda: self.covered(place, before) > 0.03, "the notification in front of the panel")
        self.photograph("notification")

    def covered(self, place, before):
        return sum(one != other for one, other in zip(before, self.desk.pixels(*place))) / len(before)


class OnX11(OnPlasma):
    shell = plasma.OnX11


class OnWayland(OnPlasma):
    shell = plasma.OnWayland


del OnPlasma, Stories
