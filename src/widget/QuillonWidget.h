#pragma once
// The viewer as a widget for Qt hosts. Installed as <quillon/QuillonWidget.h>, so it names
// nothing but Qt and the standard library.

#include <QWidget>
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
struct ComponentParts;

/// The control with its viewer window inside a Qt widget. The component behind it offers every
/// operation of the host interface; the ones a Qt host needs are forwarded here.
class QUILLON_WIDGET_API QuillonWidget final : public QWidget {
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

  QSize minimumSizeHint() const override;

 private:
  cLiveFeed& feed();

  std::unique_ptr<CQuillonCtrl> ctrl;
  cViewerHolderWnd* holder;
  bool attached = false;
  std::string neededGroups;         // of the document on show, for a feed made later
  std::unique_ptr<cLiveFeed> live;  // after the control that it feeds, so it goes first
};

}  // namespace quillon
