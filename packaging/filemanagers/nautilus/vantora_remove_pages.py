"""Adds "Remove Pages…" to the menu of PDF documents in the file manager."""
from gi.repository import GLib, GObject, Nautilus

LABELS = {"de": "Seiten entfernen …"}


def label():
    """The entry's text in the first language of the session's that there is, English for one of its kinds."""
    for language in GLib.get_language_names():
        if language in LABELS:
            return LABELS[language]
        if language.startswith("en"):
            break
    return "Remove Pages…"


class RemovePages(GObject.GObject, Nautilus.MenuProvider):
    """Offers the window for a selection of nothing but PDF documents that lie on this machine's file systems."""

    def get_file_items(self, *arguments):
        files = arguments[-1]  # alone, or behind the window in earlier versions
        if not files or any(file.get_mime_type() != "application/pdf" for file in files):
            return []
        paths = [file.get_location().get_path() for file in files]
        if None in paths:
            return []
        item = Nautilus.MenuItem(name="VantoraRemovePages", label=label(), icon="vantora-desktop")
        item.connect("activate", self.open_window, paths)
        return [item]

    def get_background_items(self, *arguments):
        return []

    def open_window(self, _item, paths):
        GLib.spawn_async(["vantora-desktop", "--", *paths], flags=GLib.SpawnFlags.SEARCH_PATH)
