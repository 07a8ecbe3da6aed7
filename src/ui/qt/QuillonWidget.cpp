#include "ui/qt/QuillonWidget.h"

#include <QVBoxLayout>

#include "control/CQuillonCtrl.h"
#include "control/QuillonComponent.h"
#include "ui/qt/cQtRenderArea.h"
#include "ui/qt/cViewerHolderWnd.h"

namespace quillon {

QuillonWidget::QuillonWidget(QWidget* parent) : QuillonWidget(MakeDefaultParts(), parent) {}

QuillonWidget::QuillonWidget(ComponentParts parts, QWidget* parent)
    : QWidget(parent), holder(new cViewerHolderWnd(parts.sceneGraph, this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(holder);
  // The render area is the holder window's panel, whatever parent the control is asked for.
  parts.makeRenderArea = [this](unsigned long, int, int) -> std::unique_ptr<IRenderArea> {
    return std::make_unique<cQtRenderArea>(holder->renderAreaPanel());
  };
  ctrl = std::make_unique<CQuillonCtrl>(std::move(parts));
  attached = ctrl->CreateWindow(static_cast<unsigned long>(winId()), width(), height()) == 0;
}

QuillonWidget::~QuillonWidget() {
  // The scene-graph holder lets go of the render area before its panel goes.
  ctrl->DestroyWindow();
}

QuillonComponent& QuillonWidget::component() { return ctrl->component(); }

std::string QuillonWidget::initializeViewer(const std::string& xml, std::string& annotated,
                                            std::string& neededChannelGroups) {
  return component().InitializeViewer(xml, annotated, neededChannelGroups);
}

std::string QuillonWidget::sendChannels(const unsigned char* bytes, std::size_t size) {
  return component().SendChannels(bytes, size);
}

void QuillonWidget::viewAll() { component().ViewAll(); }

void QuillonWidget::setViewportManipulationMode(unsigned char mode) { component().SetViewportManipulationMode(mode); }

void QuillonWidget::setBackgroundColour(float rTop, float gTop, float bTop, float rBottom, float gBottom,
                                        float bBottom) {
  component().SetBackgroundColour(rTop, gTop, bTop, rBottom, gBottom, bBottom);
}

QSize QuillonWidget::minimumSizeHint() const {
  return {static_cast<int>(QuillonComponent::kMinimalWindowWidth),
          static_cast<int>(QuillonComponent::kMinimalWindowHeight)};
}

}  // namespace quillon
