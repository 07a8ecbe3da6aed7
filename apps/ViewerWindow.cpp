#include "ViewerWindow.h"

#include <QAction>
#include <QHoverEvent>
#include <QStatusBar>
#include <QToolBar>
#include <QToolTip>
#include <QVBoxLayout>
#include <chrono>
#include <iostream>

#include "PlotDock.h"
#include "QualityLegend.h"
#include "Replay.h"
#include "ReplayTimeline.h"
#include "RouteText.h"
#include "Screenshot.h"

namespace quillon::app {
namespace {

constexpr int kTipRefreshMs = 250;
constexpr int kMessageMs = 6000;
// Half the side of the square round the pointer that keeps a tooltip up.
constexpr int kTipSlop = 6;

}  // namespace

ViewerWindow::ViewerWindow(QString label, QString screenshotFolder)
    : documentLabel(std::move(label)), folder(std::move(screenshotFolder)), qualityLegend(new QualityLegend) {
  auto* central = new QWidget(this);
  // Made inside the window, so that the window is made for OpenGL from the start.
  widget = new QuillonWidget(central);
  auto* layout = new QVBoxLayout(central);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(widget, 1);
  setCentralWidget(central);

  QToolBar* tools = addToolBar(QStringLiteral("View"));
  tools->setObjectName(QStringLiteral("tools"));
  tools->setMovable(false);
  QAction* shot = tools->addAction(QStringLiteral("Screenshot"));
  shot->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
  shot->setToolTip(QStringLiteral("Save the view as a PNG image at full resolution (Ctrl+S)"));
  connect(shot, &QAction::triggered, this, [this] { saveScreenshot(); });

  statusBar()->setSizeGripEnabled(false);
  statusBar()->addPermanentWidget(qualityLegend);
  qualityLegend->follow(*widget);

  connect(widget, &QuillonWidget::routedNodeHovered, this, [this](const RoutePick& pick) { showValues(pick); });
  widget->renderArea()->installEventFilter(this);
  connect(&tipRefresh, &QTimer::timeout, this, [this] {
    if (!QToolTip::isVisible()) {
      tipRefresh.stop();
      return;
    }
    const RoutePick pick = widget->pickAt(tipAt);
    if (pick.node.empty()) {
      QToolTip::hideText();
      tipRefresh.stop();
      return;
    }
    showValues(pick);
  });
}

ViewerWindow::~ViewerWindow() = default;

bool ViewerWindow::eventFilter(QObject* watched, QEvent* event) {
  // The tooltip goes as soon as the pointer leaves the spot it rested on; only looked at, the
  // event goes on to navigation.
  if (watched == widget->renderArea() && tipRefresh.isActive()) {
    const bool moved = event->type() == QEvent::HoverMove &&
                       (static_cast<QHoverEvent*>(event)->position().toPoint() - tipAt).manhattanLength() > kTipSlop;
    if (moved || event->type() == QEvent::HoverLeave || event->type() == QEvent::MouseButtonPress ||
        event->type() == QEvent::Wheel) {
      tipRefresh.stop();
      QToolTip::hideText();
    }
  }
  return QMainWindow::eventFilter(watched, event);
}

void ViewerWindow::showValues(const RoutePick& pick) {
  tipAt = pick.position;
  QWidget* area = widget->renderArea();
  const QString text =
      RouteTooltip(pick, widget->nominalThreshold(), widget->meaningfulThreshold(), std::chrono::steady_clock::now());
  QToolTip::showText(area->mapToGlobal(pick.position), text, area,
                     QRect(pick.position - QPoint(kTipSlop, kTipSlop), QSize(2 * kTipSlop + 1, 2 * kTipSlop + 1)));
  tipRefresh.start(kTipRefreshMs);
}

void ViewerWindow::setReplay(Replay& replay, const std::vector<ChannelStreamRecord>& recording) {
  replayTimeline = new ReplayTimeline(replay, centralWidget());
  centralWidget()->layout()->addWidget(replayTimeline);
  replayTimeline->addShortcuts(this);
  addPlots(&recording, &replay);
}

void ViewerWindow::plotLive() { addPlots(nullptr, nullptr); }

void ViewerWindow::addPlots(const std::vector<ChannelStreamRecord>* recording, Replay* replay) {
  if (plotDock) return;
  std::function<double()> now;
  if (replay) now = [replay] { return static_cast<double>(replay->position()) / 1e6; };
  plotDock = new PlotDock(*widget, recording, std::move(now), this);
  addDockWidget(Qt::RightDockWidgetArea, plotDock);
  plotDock->hide();
  plotsAction = plotDock->toggleViewAction();
  plotsAction->setToolTip(QStringLiteral("Plot channels over the last seconds; click a part to add its channels"));
  findChild<QToolBar*>(QStringLiteral("tools"))->addAction(plotsAction);
}

QString ViewerWindow::saveScreenshot() {
  QString path = SaveScreenshot(*widget, documentLabel, folder);
  if (path.isEmpty()) {
    statusBar()->showMessage(QStringLiteral("Could not save a screenshot in %1").arg(folder), kMessageMs);
    std::cerr << "quillon view: could not save a screenshot in " << folder.toStdString() << std::endl;
  } else {
    statusBar()->showMessage(QStringLiteral("Saved %1").arg(path), kMessageMs);
    std::cout << "quillon view: saved " << path.toStdString() << std::endl;
  }
  return path;
}

}  // namespace quillon::app
