#include "Screenshot.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>

#include "widget/QuillonWidget.h"

namespace quillon::app {

QString ScreenshotName(const QString& label, const QDateTime& when) {
  QString stem;
  for (const QChar c : label.trimmed()) {
    if (c.isLetterOrNumber() || c == QLatin1Char('-') || c == QLatin1Char('_'))
      stem += c;
    else if (!stem.isEmpty() && !stem.endsWith(QLatin1Char('_')))
      stem += QLatin1Char('_');
  }
  while (stem.endsWith(QLatin1Char('_'))) stem.chop(1);
  if (stem.isEmpty()) stem = QStringLiteral("quillon");
  return QStringLiteral("%1-%2.png").arg(stem, when.toString(QStringLiteral("yyyy-MM-dd_HH-mm-ss")));
}

QString SaveScreenshot(QuillonWidget& viewer, const QString& label, const QString& folder, const QDateTime& when) {
  const QImage image = viewer.grabImage();
  if (image.isNull()) return {};
  const QDir dir(folder);
  const QString name = ScreenshotName(label, when);
  QString path = dir.filePath(name);
  for (int n = 2; QFileInfo::exists(path); ++n)
    path = dir.filePath(QStringLiteral("%1-%2.png").arg(name.chopped(4)).arg(n));
  if (!image.save(path, "PNG")) {
    QFile::remove(path);  // a failed write leaves nothing behind
    return {};
  }
  return path;
}

}  // namespace quillon::app
