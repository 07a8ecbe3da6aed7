#pragma once
// The viewer as a widget for Qt hosts. Installed as <quillon/QuillonWidget.h>, so it names
// nothing but Qt and the standard library.

#include <QImage>
#include <QPoint>
#include <QWidget>
#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// The widget's library exports this class alone.
#define QUILLON_WIDGET_API __attribute__((visibility("default")))

namespace quillon {

class CQuillonCtrl;
class QuillonComponent;
class cViewerHolderWnd;
class cLiveFeed;
class ISceneGraphImplementor;
struct ComponentParts;
class RouteHover;

/// One route of the document on show, with the newest value of its channel.
struct RouteState {
  enum class Kind { Value1D, Value3D, Frame6D, Time };

  std::string node;   // the DEF name of the node that the route drives
  std::string field;  // empty when the route names none
  std::string from;   // the channel as the document names it, name[group][channel][kind]
  std::string controlPath;
  std::int32_t group = 0;
  std::uint32_t channel = 0;
  Kind kind = Kind::Value1D;
  double scale = 1.0;
  bool freezes = false;    // a bad value freezes the node (else hides it)
  bool cascading = false;  // reaches every material below the node
  /// The colours that a value picks from, when the route colours through a map: value × scale
  /// from 0 to 1 runs through them. Empty for every other route.
  std::vector<std::array<float, 3>> colourMap;

  /// The newest value: 1 number, 3 components, or a frame's position followed by its rotation
  /// row by row (12). Empty until the first value arrives.
  std::vector<double> value;
  double quality = 0.0;
  std::int32_t status = 0;
  std::uint32_t timestamp = 0;
  std::uint64_t received = 0;  // values so far
  /// When the value, its quality or its status last changed.
  std::chrono::steady_clock::time_point changed;
};

/// What lies under a point of the render area, as far as routes drive it.
struct RoutePick {
  std::string node;  // the most particular routed node there; empty when nothing routed is there
  QPoint position;   // in the render area's coordinates
  /// The routes that drive that node or a node above it, the most particular first.
  std::vector<RouteState> routes;
};

/// The control with its viewer window inside a Qt widget. The component behind it offers every
/// operation of the host interface; the ones a Qt host needs are forwarded here.
class QUILLON_WIDGET_API QuillonWidget final : public QWidget {
  Q_OBJECT

 public:
  /// The viewer with the default parts: the shared scene-graph holder and its manipulator.
  explicit QuillonWidget(QWidget* parent = nullptr);
  explicit QuillonWidget(ComponentParts parts, QWidget* parent = nullptr);
  ~QuillonWidget() override;

  /// The component and the control behind the widget, for code inside this project.
  QuillonComponent& component();
  CQuillonCtrl& control();
  cViewerHolderWnd* holderWindow() const { return holder; }
  /// True when the render area is attached to the scene-graph holder.
  bool hasRenderArea() const { return attached; }

  /// InitializeViewer_v1: always the empty text; `annotated` and `neededChannelGroups` as the host gets them.
  std::string initializeViewer(const std::string& xml, std::string& annotated, std::string& neededChannelGroups);
  /// The same load, returning 0 or the code of its first error (quillon_load_document).
  int loadDocument(const std::string& xml, std::string& annotated, std::string& neededChannelGroups);
  /// The empty text when the message decoded cleanly, else the error list.
  std::string sendChannels(const unsigned char* bytes, std::size_t size);
  void viewAll();
  /// 0 zoom, 1 pan, 2 rotate.
  void setViewportManipulationMode(unsigned char mode);
  void setBackgroundColour(float rTop, float gTop, float bTop, float rBottom, float gBottom, float bBottom);
  void setNominalThreshold(float threshold);
  void setMeaningfulThreshold(float threshold);
  /// True when a node of that DEF name was found.
  bool hideNode(const std::string& name);
  bool unhideNode(const std::string& name);

  /// Live data over ZeroMQ (docs/live-data.md): subscribes at `endpoint` to the groups that the
  /// loaded document needs, and follows each document loaded later. The newest message of each
  /// group is applied on this widget's thread. With `serverKey`, the publisher's CURVE public
  /// key, the connection is encrypted and only that publisher is heard; `secretKey` is this
  /// viewer's own, made up when empty. Keys are Z85 text or files holding it. Returns the error
  /// text, empty on success.
  std::string connectTo(const std::string& endpoint, const std::string& serverKey = {},
                        const std::string& secretKey = {});
  /// Waits at `endpoint` for publishers to connect. With `secretKey`, this viewer's CURVE secret
  /// key, connections are encrypted, and when `clientKeys` (keys, or files of keys one a line)
  /// are given only those publishers get in. Returns the error text, empty on success.
  std::string bindTo(const std::string& endpoint, const std::string& secretKey = {},
                     const std::vector<std::string>& clientKeys = {});
  /// Null until the first connectTo or bindTo.
  cLiveFeed* liveFeed() const { return live.get(); }
  /// One line on the live source: messages a second, drops, conflation, the newest message's age,
  /// or how long it has been silent. The rate is measured since the previous call.
  std::string liveStatus();

  /// The routes of the document on show, in document order, with their newest values.
  std::vector<RouteState> routes() const;
  /// The quality thresholds as last set; until then the ones the viewer starts with (0 and 100).
  float nominalThreshold() const;
  float meaningfulThreshold() const;
  /// The routed node under a point of the render area (its own coordinates), from what the last
  /// frame showed.
  RoutePick pickAt(const QPoint& position);
  /// The render area, in which the pointer is watched for hovering and clicks.
  QWidget* renderArea() const;
  /// What the render area shows, at its full resolution in device pixels; null without a window.
  QImage grabImage();
  /// How long the pointer must rest before routedNodeHovered; 0 stops watching it. Default 500 ms.
  void setHoverDelay(int milliseconds);

  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// The pointer came to rest over a part that a route drives, or a part below one.
  void routedNodeHovered(const quillon::RoutePick& pick);
  /// A click (pressed and released in place) on such a part; navigation sees the same click.
  void routedNodeClicked(const quillon::RoutePick& pick);
  void thresholdsChanged(float nominal, float meaningful);
  /// A document was loaded; the routes are those of the new document.
  void documentLoaded();
  /// A message was handed to the viewer; routes() has its values.
  void channelsSent();

 private:
  cLiveFeed& feed();

  std::unique_ptr<CQuillonCtrl> ctrl;
  ISceneGraphImplementor* sceneGraph;  // process-wide, not owned
  cViewerHolderWnd* holder;
  bool attached = false;
  std::string neededGroups;         // of the document on show, for a feed made later
  std::unique_ptr<cLiveFeed> live;  // after the control that it feeds, so it goes first
  std::unique_ptr<RouteHover> hover;
};

}  // namespace quillon
