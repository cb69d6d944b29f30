#pragma once

// A window saved as PNG for a script, through the product's one write path: a
// screenshot that cannot be written whole leaves the file that was there.
#include "QvKsWriteStatus.h"

class QString;
class QWidget;

QvKsWriteStatus SaveScreenshot(QWidget* widget, const QString& path);
