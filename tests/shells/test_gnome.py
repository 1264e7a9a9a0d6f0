"""The companion on GNOME, whose extension opens the menu on one click and the panel on two."""

import gnome
from stories import Stories


class OnGnome(Stories):
    def click_item(self):
        self.desk.close_menu()
        self.desk.click(*self.place_of_item(), times=2, pause_ms=120)

    def open_panel(self):
        """A busy shell opens the menu too, before it has seen that the click was one of two; the menu takes the keys."""
        place = super().open_panel()
        self.desk.close_menu()
        return place

    def choose(self, label):
        """By the menu that one click opens."""
        self.click_item_once()
        x, y, width, height = self.wait_for(lambda: self.desk.menu_entry(label), f"the entry {label}")
        self.desk.click(x + width // 2, y + height // 2)


class OnX11(OnGnome):
    shell = gnome.OnX11


class OnWayland(OnGnome):
    shell = gnome.OnWayland


del OnGnome, Stories
