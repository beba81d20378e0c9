#pragma once

class QLineEdit;
class QString;

/// Tells the user why a name is refused, and leads back to the name to be changed.
void RefuseName(const QString& reason, QLineEdit* nameEdit);
