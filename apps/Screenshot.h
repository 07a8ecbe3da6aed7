#pragma once
// Screenshots of quillon view's render area.

#include <QDateTime>
#include <QString>

namespace quillon {
class QuillonWidget;
}

namespace quillon::app {

/// The file name of a screenshot: the document's label, kept to letters, digits, '-' and '_',
/// then the local time, e.g. "A_robot_arm-2024-05-01_12-30-05.png".
QString ScreenshotName(const QString& label, const QDateTime& when);

/// Saves what the render area shows, at its full resolution, as a PNG image in `folder` under
/// ScreenshotName (with "-2", "-3", … when that file is there already). Returns the path
/// written, or an empty text when there was nothing to save or the file could not be written.
QString SaveScreenshot(QuillonWidget& viewer, const QString& label, const QString& folder,
                       const QDateTime& when = QDateTime::currentDateTime());

}  // namespace quillon::app
