#pragma once
// The scene-graph holder as the viewer component, the document reader and navigation see it.

#include <memory>
#include <string>
#include <vector>

namespace quillon {

class ICamera;
class IRenderArea;
class ISGBuilder;
class ISceneMappingBuilder;
class IViewportManipulator;

/// Owns the displayed scene, its camera, head light, background and render area.
/// No operation reports an error: without its objects an operation does nothing.
class ISceneGraphImplementor {
 public:
  virtual ~ISceneGraphImplementor() = default;

  virtual void initialize() = 0;
  virtual void terminate() = 0;
  /// The camera, or a camera that does nothing while no render area is attached; never null.
  virtual ICamera& camera() = 0;
  virtual ISGBuilder* sceneGraphBuilder() = 0;
  virtual ISceneMappingBuilder* sceneMappingBuilder() = 0;
  virtual IViewportManipulator* viewportManipulator() = 0;
  /// Draws into the area from now on; the holder owns it.
  virtual void attachToWindow(std::unique_ptr<IRenderArea> area) = 0;
  virtual void detachFromWindow() = 0;
  virtual void setBackgroundColours(float r1, float g1, float b1, float r2, float g2, float b2) = 0;
  virtual void clearRegistries() = 0;
  /// Schedules a redraw; never waits for the draw.
  virtual void refresh(int flag) = 0;
  virtual void render() = 0;
  virtual void boundingSphere(float& x, float& y, float& z, float& radius) = 0;

  /// The render area attached now, or null.
  virtual IRenderArea* renderArea() = 0;
  /// Sets the choice of the first named switchable node of that exact name, in insertion
  /// order; false when there is none.
  virtual bool setSwitchChoice(const std::string& nodeName, int choice) = 0;
  /// Switches the override colour of every colourable object on (with the colour) or off.
  virtual void setForegroundOverride(bool on, float r, float g, float b) = 0;
  /// The DEF names of what is drawn at a pixel of the render area (device pixels from its top
  /// left), the most particular first: the nearest shape's named material and appearance, then
  /// its named nodes from the geometry up to the root. Empty where nothing is drawn; a holder
  /// that cannot tell answers empty.
  virtual std::vector<std::string> namedObjectsAt(int, int) { return {}; }
};

}  // namespace quillon
