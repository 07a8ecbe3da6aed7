#include "widget/QuillonWidget.h"

#include <QGuiApplication>
#include <QHoverEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "channels/ChannelgroupAddress.h"
#include "channels/ZrValue.h"
#include "control/CQuillonCtrl.h"
#include "control/QuillonComponent.h"
#include "live/CurveKeys.h"
#include "live/qt/cLiveFeed.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "ui/qt/cQtRenderArea.h"
#include "ui/qt/cRenderAreaPanel.h"
#include "ui/qt/cViewerHolderWnd.h"

namespace quillon {

/// Watches the pointer over the render area for the hover and click signals. It only looks:
/// every event goes on to navigation as it came.
class RouteHover final : public QObject {
 public:
  static constexpr int kDefaultDelayMs = 500;
  // A press and release this close together (pixels, Manhattan length) make a click.
  static constexpr int kClickSlop = 3;

  RouteHover(QuillonWidget& owner, QWidget* area) : widget(owner), panel(area) {
    // Hover events come with every move, with or without a button, and without turning on the
    // mouse tracking that would hand each move to navigation too.
    panel->setAttribute(Qt::WA_Hover);
    panel->installEventFilter(this);
    rest.setSingleShot(true);
    rest.setInterval(kDefaultDelayMs);
    QObject::connect(&rest, &QTimer::timeout, this, [this] { rested(); });
  }

  void setDelay(int milliseconds) {
    delay = std::max(0, milliseconds);
    rest.stop();
    if (delay > 0) rest.setInterval(delay);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched != panel) return false;
    switch (event->type()) {
      case QEvent::HoverMove:
        pointer = static_cast<QHoverEvent*>(event)->position().toPoint();
        if (delay > 0 && QGuiApplication::mouseButtons() == Qt::NoButton)
          rest.start();
        else
          rest.stop();
        break;
      case QEvent::HoverLeave:
      case QEvent::Wheel:
        rest.stop();
        break;
      case QEvent::MouseButtonPress: {
        rest.stop();
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::LeftButton) pressedAt = mouse->position().toPoint();
        break;
      }
      case QEvent::MouseButtonRelease: {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        const QPoint at = mouse->position().toPoint();
        if (mouse->button() == Qt::LeftButton && pressedAt && (at - *pressedAt).manhattanLength() <= kClickSlop) {
          const RoutePick pick = widget.pickAt(at);
          if (!pick.node.empty()) Q_EMIT widget.routedNodeClicked(pick);
        }
        if (mouse->button() == Qt::LeftButton) pressedAt.reset();
        break;
      }
      default:
        break;
    }
    return false;
  }

 private:
  void rested() {
    if (!panel->underMouse()) return;
    const RoutePick pick = widget.pickAt(pointer);
    if (!pick.node.empty()) Q_EMIT widget.routedNodeHovered(pick);
  }

  QuillonWidget& widget;
  QWidget* panel;
  QTimer rest;
  int delay = kDefaultDelayMs;
  QPoint pointer;
  std::optional<QPoint> pressedAt;
};

namespace {

RouteState::Kind kindOf(ChannelKind kind) {
  switch (kind) {
    case ChannelKind::Kind3D:
      return RouteState::Kind::Value3D;
    case ChannelKind::Kind6D:
      return RouteState::Kind::Frame6D;
    case ChannelKind::KindTime:
      return RouteState::Kind::Time;
    case ChannelKind::Kind1D:
      break;
  }
  return RouteState::Kind::Value1D;
}

std::size_t countOf(int valueType) {
  switch (valueType) {
    case kZrValue3D:
      return 3;
    case kZrValue6D:
      return 12;
    case kZrValue1D:
    case kZrValueTime:
      return 1;
    default:
      return 0;
  }
}

RouteState stateOf(const RouteEntry& entry) {
  RouteState state;
  state.node = entry.nodeName;
  state.field = entry.fieldName;
  state.from = entry.from;
  state.controlPath = entry.controlPathName;
  state.group = entry.groupNumber;
  state.channel = entry.channelNumber;
  state.kind = kindOf(entry.kind);
  state.scale = entry.scale;
  state.freezes = !entry.hide;
  state.cascading = entry.cascading;
  state.colourMap = entry.colourMap;
  const RouteSample& sample = entry.sample;
  if (sample.received > 0) {
    state.value.assign(sample.numbers.begin(),
                       sample.numbers.begin() + static_cast<std::ptrdiff_t>(countOf(sample.type)));
    state.quality = sample.quality;
    state.status = sample.status;
    state.timestamp = sample.timestamp;
    state.received = sample.received;
    state.changed = sample.changed;
  }
  return state;
}

}  // namespace

QuillonWidget::QuillonWidget(QWidget* parent) : QuillonWidget(MakeDefaultParts(), parent) {}

QuillonWidget::QuillonWidget(ComponentParts parts, QWidget* parent)
    : QWidget(parent), sceneGraph(parts.sceneGraph), holder(new cViewerHolderWnd(parts.sceneGraph, this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(holder);
  // The render area is the holder window's panel, whatever parent the control is asked for.
  parts.makeRenderArea = [this](unsigned long, int, int) -> std::unique_ptr<IRenderArea> {
    return std::make_unique<cQtRenderArea>(holder->renderAreaPanel());
  };
  ctrl = std::make_unique<CQuillonCtrl>(std::move(parts));
  // Any parent but 0 asks for a window on the screen, and the factory above ignores which. The
  // holder stands in for it rather than a native window of this widget's own, which would keep
  // the widget from being composed into a host's window with the rest of it.
  attached = ctrl->CreateWindow(reinterpret_cast<std::uintptr_t>(holder), width(), height()) == 0;
  hover = std::make_unique<RouteHover>(*this, holder->renderAreaPanel());
}

QuillonWidget::~QuillonWidget() {
  hover.reset();
  live.reset();
  // The scene-graph holder lets go of the render area before its panel goes.
  ctrl->DestroyWindow();
}

QuillonComponent& QuillonWidget::component() { return ctrl->component(); }

CQuillonCtrl& QuillonWidget::control() { return *ctrl; }

std::string QuillonWidget::initializeViewer(const std::string& xml, std::string& annotated,
                                            std::string& neededChannelGroups) {
  // InitializeViewer_v1's text is empty whatever the outcome, and the live feed must know it,
  // so this goes through the load that tells.
  loadDocument(xml, annotated, neededChannelGroups);
  return {};
}

int QuillonWidget::loadDocument(const std::string& xml, std::string& annotated, std::string& neededChannelGroups) {
  const int code = component().LoadDocument(xml, annotated, neededChannelGroups);
  // A refused document leaves the previous scene on show, and with it the previous groups.
  if (code != 0) return code;
  neededGroups = neededChannelGroups;
  if (live) live->setGroups(ParseNeededGroups(neededGroups));
  Q_EMIT documentLoaded();
  return code;
}

std::string QuillonWidget::sendChannels(const unsigned char* bytes, std::size_t size) {
  std::string errors = component().SendChannels(bytes, size);
  Q_EMIT channelsSent();
  return errors;
}

void QuillonWidget::viewAll() { component().ViewAll(); }

void QuillonWidget::setViewportManipulationMode(unsigned char mode) { component().SetViewportManipulationMode(mode); }

void QuillonWidget::setBackgroundColour(float rTop, float gTop, float bTop, float rBottom, float gBottom,
                                        float bBottom) {
  component().SetBackgroundColour(rTop, gTop, bTop, rBottom, gBottom, bBottom);
}

void QuillonWidget::setNominalThreshold(float threshold) {
  component().SetNominalThreshold(threshold);
  Q_EMIT thresholdsChanged(nominalThreshold(), meaningfulThreshold());
}

void QuillonWidget::setMeaningfulThreshold(float threshold) {
  component().SetMeaningfulThreshold(threshold);
  Q_EMIT thresholdsChanged(nominalThreshold(), meaningfulThreshold());
}

float QuillonWidget::nominalThreshold() const { return ctrl->component().Routes().NominalThreshold(); }

float QuillonWidget::meaningfulThreshold() const { return ctrl->component().Routes().MeaningfulThreshold(); }

std::vector<RouteState> QuillonWidget::routes() const {
  const RouteValues& values = ctrl->component().Routes();
  std::vector<RouteState> states;
  states.reserve(values.Count());
  for (std::size_t i = 0; i < values.Count(); ++i) states.push_back(stateOf(values.At(i)));
  return states;
}

RoutePick QuillonWidget::pickAt(const QPoint& position) {
  RoutePick pick;
  pick.position = position;
  if (!sceneGraph || !attached) return pick;
  const double scale = holder->renderAreaPanel()->devicePixelRatioF();
  const std::vector<std::string> names =
      sceneGraph->namedObjectsAt(static_cast<int>(position.x() * scale), static_cast<int>(position.y() * scale));
  if (names.empty()) return pick;
  const std::vector<RouteState> all = routes();
  for (auto name = names.begin(); name != names.end(); ++name) {
    if (std::find(names.begin(), name, *name) != name) continue;  // a name met before
    for (const RouteState& route : all) {
      if (route.node != *name) continue;
      if (pick.node.empty()) pick.node = route.node;
      pick.routes.push_back(route);
    }
  }
  return pick;
}

QWidget* QuillonWidget::renderArea() const { return holder->renderAreaPanel(); }

QImage QuillonWidget::grabImage() { return attached ? holder->renderAreaPanel()->grabFramebuffer() : QImage(); }

void QuillonWidget::setHoverDelay(int milliseconds) { hover->setDelay(milliseconds); }

bool QuillonWidget::hideNode(const std::string& name) { return component().HideNode(name); }

bool QuillonWidget::unhideNode(const std::string& name) { return component().UnhideNode(name); }

cLiveFeed& QuillonWidget::feed() {
  if (!live) {
    live = std::make_unique<cLiveFeed>(
        [this](const unsigned char* bytes, std::size_t size) { return sendChannels(bytes, size); });
    live->setGroups(ParseNeededGroups(neededGroups));
  }
  return *live;
}

std::string QuillonWidget::connectTo(const std::string& endpoint, const std::string& serverKey,
                                     const std::string& secretKey) {
  CurveKeys keys;
  std::string error;
  if (!serverKey.empty()) error = ReadCurveKey(serverKey, keys.serverKey);
  if (error.empty() && !secretKey.empty()) error = ReadCurveKey(secretKey, keys.secretKey);
  if (error.empty() && keys.serverKey.empty() && !keys.secretKey.empty())
    error = "a secret key without the server's key would make this viewer the CURVE server";
  return error.empty() ? feed().connectTo(endpoint, keys) : error;
}

std::string QuillonWidget::bindTo(const std::string& endpoint, const std::string& secretKey,
                                  const std::vector<std::string>& clientKeys) {
  CurveKeys keys;
  std::string error;
  if (!secretKey.empty()) error = ReadCurveKey(secretKey, keys.secretKey);
  for (const std::string& value : clientKeys)
    if (error.empty()) error = ReadCurveKeys(value, keys.clientKeys);
  return error.empty() ? feed().bindTo(endpoint, keys) : error;
}

std::string QuillonWidget::liveStatus() { return live ? live->statusLine() : std::string(); }

QSize QuillonWidget::minimumSizeHint() const {
  return {static_cast<int>(QuillonComponent::kMinimalWindowWidth),
          static_cast<int>(QuillonComponent::kMinimalWindowHeight)};
}

}  // namespace quillon
