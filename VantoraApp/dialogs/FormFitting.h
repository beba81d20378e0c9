#pragma once

class QWidget;

/// Fits the white widget of a form to its texts: makes it larger where they need more room than the
/// form gives them, as with large fonts, and writes them in black, with light fields and buttons
/// also where the desktop is dark. `border` is by how many pixels the widget will be narrower, once
/// it is shown, than it is now.
void FitFormToTexts(QWidget* form, int border);
