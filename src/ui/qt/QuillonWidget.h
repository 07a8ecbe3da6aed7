#pragma once
// The viewer as a widget for Qt hosts.

#include <QWidget>
#include <memory>
#include <string>

#include "control/ComponentParts.h"

namespace quillon {

class CQuillonCtrl;
class QuillonComponent;
class cViewerHolderWnd;

/// The control with its viewer window inside a Qt widget. The component behind it offers every
/// operation of the host interface; the most used ones are forwarded here.
class QuillonWidget final : public QWidget {
 public:
  /// The viewer with the default parts: the shared scene-graph holder and its manipulator.
  explicit QuillonWidget(QWidget* parent = nullptr);
  explicit QuillonWidget(ComponentParts parts, QWidget* parent = nullptr);
  ~QuillonWidget() override;

  QuillonComponent& component();
  CQuillonCtrl& control() { return *ctrl; }
  cViewerHolderWnd* holderWindow() const { return holder; }
  /// True when the render area is attached to the scene-graph holder.
  bool hasRenderArea() const { return attached; }

  /// The error text, empty on success; `annotated` and `neededChannelGroups` as the host gets them.
  std::string initializeViewer(const std::string& xml, std::string& annotated, std::string& neededChannelGroups);
  std::string sendChannels(const unsigned char* bytes, std::size_t size);
  void viewAll();
  void setViewportManipulationMode(unsigned char mode);
  void setBackgroundColour(float rTop, float gTop, float bTop, float rBottom, float gBottom, float bBottom);

  QSize minimumSizeHint() const override;

 private:
  std::unique_ptr<CQuillonCtrl> ctrl;
  cViewerHolderWnd* holder;
  bool attached = false;
};

}  // namespace quillon
