#pragma once
// The process-wide holder of the displayed scene, on OpenSceneGraph.

#include <memory>
#include <osg/Group>
#include <osg/ref_ptr>
#include <osgViewer/Viewer>

#include "scenegraph/ISceneGraphImplementor.h"
#include "scenegraph/osgCamera.h"
#include "scenegraph/osgSceneRegistry.h"

namespace quillon {

class OSGSceneGraphBuilder;

/// Owns the scene's root, the registries that name its nodes, the render area with the
/// viewer that draws into it, the camera "ViewCamera" with its head light, and the
/// background colour. The viewer component reaches the one of the process through Shared();
/// tests may make holders of their own.
class OSGSceneGraph final : public ISceneGraphImplementor {
 public:
  OSGSceneGraph();
  ~OSGSceneGraph() override;
  OSGSceneGraph(const OSGSceneGraph&) = delete;
  OSGSceneGraph& operator=(const OSGSceneGraph&) = delete;

  /// The holder of the process, made and initialised on first use and never destroyed.
  static OSGSceneGraph& Shared();

  void initialize() override;
  void terminate() override;
  ICamera& camera() override;
  ISGBuilder* sceneGraphBuilder() override;
  ISceneMappingBuilder* sceneMappingBuilder() override { return mappingBuilder.get(); }
  IViewportManipulator* viewportManipulator() override { return manipulator.get(); }
  void attachToWindow(std::unique_ptr<IRenderArea> area) override;
  void detachFromWindow() override;
  void setBackgroundColours(float r1, float g1, float b1, float r2, float g2, float b2) override;
  void clearRegistries() override;
  void refresh(int flag) override;
  void render() override;
  void boundingSphere(float& x, float& y, float& z, float& radius) override;
  IRenderArea* renderArea() override { return area.get(); }
  bool setSwitchChoice(const std::string& nodeName, int choice) override;
  void setForegroundOverride(bool on, float r, float g, float b) override;
  std::vector<std::string> namedObjectsAt(int x, int y) override;

  /// The root group of the displayed scene; null before initialize and after terminate.
  osg::Group* root() const { return rootGroup.get(); }
  /// What the builder recorded about the displayed scene. Scene mappings find their nodes
  /// here, and may add the switches and materials they make.
  osgSceneRegistry& registry() { return registries; }
  /// Makes a freshly built scene the displayed one, with its registries; the old scene goes
  /// once nothing else holds it.
  void replaceScene(osg::ref_ptr<osg::Group> newRoot, osgSceneRegistry newRegistries);
  const osg::Vec4& backgroundColour() const { return background; }
  /// The runtime's viewer while a window is attached, else null.
  osgViewer::Viewer* viewer() const { return view.get(); }

  /// Hooks in the parts that other subsystems make; the holder hands them out.
  void setSceneMappingBuilder(std::shared_ptr<ISceneMappingBuilder> b) { mappingBuilder = std::move(b); }
  void setViewportManipulator(std::shared_ptr<IViewportManipulator> m) { manipulator = std::move(m); }

 private:
  void applyBackground();
  /// Frees a scene that is no longer shown of its GL objects, in the area's context, and makes
  /// the render state forget the vertex arrays it drew last.
  void retire(osg::Group* old);

  osg::ref_ptr<osg::Group> rootGroup;
  osgSceneRegistry registries;
  osg::Vec4 background{0.3f, 0.3f, 0.5f, 1.0f};
  std::unique_ptr<IRenderArea> area;
  osg::ref_ptr<osgViewer::Viewer> view;
  std::unique_ptr<osgCamera> cameraWrapper;
  std::unique_ptr<OSGSceneGraphBuilder> builder;
  std::shared_ptr<ISceneMappingBuilder> mappingBuilder;
  std::shared_ptr<IViewportManipulator> manipulator;
};

}  // namespace quillon
