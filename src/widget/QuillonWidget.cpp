#include "widget/QuillonWidget.h"

#include <QVBoxLayout>

#include "channels/ChannelgroupAddress.h"
#include "control/CQuillonCtrl.h"
#include "control/QuillonComponent.h"
#include "live/CurveKeys.h"
#include "live/qt/cLiveFeed.h"
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
  return code;
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

void QuillonWidget::setNominalThreshold(float threshold) { component().SetNominalThreshold(threshold); }

void QuillonWidget::setMeaningfulThreshold(float threshold) { component().SetMeaningfulThreshold(threshold); }

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
