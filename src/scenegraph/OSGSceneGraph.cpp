#include "scenegraph/OSGSceneGraph.h"

#include <algorithm>
#include <cmath>
#include <osg/GLObjects>
#include <osg/Light>
#include <osg/State>
#include <osgUtil/IntersectionVisitor>
#include <osgUtil/LineSegmentIntersector>
#include <osgViewer/GraphicsWindow>
#include <utility>

#include "scenegraph/GlErrorLog.h"
#include "scenegraph/GlValues.h"
#include "scenegraph/IRenderArea.h"
#include "scenegraph/OSGSceneGraphBuilder.h"
#include "scenegraph/osgFakeCamera.h"

namespace quillon {
namespace {

// The area's context for one piece of work, given back when the work ends however it ends.
class CurrentArea {
 public:
  explicit CurrentArea(IRenderArea* a) : area(a && a->makeCurrent() ? a : nullptr) {}
  ~CurrentArea() {
    if (area) area->doneCurrent();
  }
  CurrentArea(const CurrentArea&) = delete;
  CurrentArea& operator=(const CurrentArea&) = delete;
  explicit operator bool() const { return area != nullptr; }

 private:
  IRenderArea* area;
};

// The head light: a point light beside the eye that moves with the view.
void setUpHeadLight(osgViewer::Viewer& viewer) {
  viewer.setLightingMode(osg::View::HEADLIGHT);
  osg::Light* light = viewer.getLight();
  if (!light) return;
  constexpr float kIntensity = 0.5f;
  const osg::Vec4 white(kIntensity, kIntensity, kIntensity, 1.0f);
  light->setAmbient(white);
  light->setDiffuse(white);
  light->setSpecular(white);
  light->setPosition(osg::Vec4(50.0f, 50.0f, 0.0f, 1.0f));
  light->setConstantAttenuation(1.0f);
  light->setLinearAttenuation(0.0f);
  light->setQuadraticAttenuation(0.0f);
}

}  // namespace

OSGSceneGraph::OSGSceneGraph() : builder(std::make_unique<OSGSceneGraphBuilder>(*this)) {}

OSGSceneGraph::~OSGSceneGraph() {
  detachFromWindow();
  terminate();
}

OSGSceneGraph& OSGSceneGraph::Shared() {
  // Never destroyed: its GL objects must not outlive the runtime's own statics at exit.
  static OSGSceneGraph* const shared = [] {
    auto* holder = new OSGSceneGraph();
    holder->initialize();
    return holder;
  }();
  return *shared;
}

void OSGSceneGraph::initialize() {
  if (rootGroup) return;
  rootGroup = new osg::Group();
  if (view) view->setSceneData(rootGroup.get());
}

void OSGSceneGraph::terminate() {
  clearRegistries();
  if (view) view->setSceneData(nullptr);
  retire(rootGroup.get());
  rootGroup = nullptr;
}

ICamera& OSGSceneGraph::camera() {
  static osgFakeCamera fake;
  return cameraWrapper ? static_cast<ICamera&>(*cameraWrapper) : fake;
}

ISGBuilder* OSGSceneGraph::sceneGraphBuilder() { return builder.get(); }

void OSGSceneGraph::attachToWindow(std::unique_ptr<IRenderArea> newArea) {
  if (!newArea || !newArea->graphicsWindow()) return;
  detachFromWindow();
  area = std::move(newArea);

  osg::ref_ptr<osgViewer::Viewer> viewer = new osgViewer::Viewer();
  viewer->setThreadingModel(osgViewer::ViewerBase::SingleThreaded);
  viewer->setKeyEventSetsDone(0);
  viewer->setQuitEventSetsDone(false);
  osg::Camera* camera = viewer->getCamera();
  camera->setName(osgCamera::kName);
  camera->setGraphicsContext(area->graphicsWindow());
  camera->setViewport(0, 0, area->width(), area->height());
  // Scaled transforms would otherwise scale the normals, and with them the lighting.
  camera->getOrCreateStateSet()->setMode(GL_NORMALIZE, osg::StateAttribute::ON);
  setUpHeadLight(*viewer);
  if (rootGroup) viewer->setSceneData(rootGroup.get());
  if (const CurrentArea current(area.get()); current) {
    viewer->realize();
    CheckGlErrors("realising the viewer");
  }
  view = viewer;

  cameraWrapper = std::make_unique<osgCamera>();
  setBackgroundColours(0.3f, 0.3f, 0.5f, 0.3f, 0.3f, 0.5f);
  applyBackground();
}

void OSGSceneGraph::detachFromWindow() {
  cameraWrapper.reset();
  if (view) {
    // The viewer closes its context on the way out; that must happen in the area's context.
    if (const CurrentArea current(area.get()); current) {
      if (rootGroup) rootGroup->releaseGLObjects(area->graphicsWindow()->getState());
      view = nullptr;
      CheckGlErrors("releasing the window's objects");
    }
    view = nullptr;
  }
  area.reset();
}

void OSGSceneGraph::setBackgroundColours(float r1, float g1, float b1, float r2, float g2, float b2) {
  if (!rootGroup) return;
  background.set((r1 + r2) / 2, (g1 + g2) / 2, (b1 + b2) / 2, 1.0f);
  applyBackground();
}

void OSGSceneGraph::applyBackground() {
  if (view) view->getCamera()->setClearColor(GlColour(background.r(), background.g(), background.b(), 1.0f));
}

void OSGSceneGraph::clearRegistries() { registries.clear(); }

void OSGSceneGraph::refresh(int) {
  if (area && view) area->triggerRedraw();
}

void OSGSceneGraph::render() {
  if (!area || !view || !rootGroup || !cameraWrapper) return;
  try {
    const CurrentArea current(area.get());
    if (!current) return;
    WatchGlErrors(area->graphicsWindow()->getState());
    CheckGlErrors("before the frame");
    osg::Camera* camera = view->getCamera();
    camera->setViewport(0, 0, area->width(), area->height());
    cameraWrapper->setAspectRatio(static_cast<double>(area->width()) / area->height());
    cameraWrapper->applyTo(*camera, rootGroup->getBound());
    view->frame();
    CheckGlErrors("after the frame");
    area->present();
    CheckGlErrors("after presenting the frame");
  } catch (...) {
    // A failed frame leaves the last picture; the host is never the victim of a draw.
  }
}

void OSGSceneGraph::boundingSphere(float& x, float& y, float& z, float& radius) {
  x = y = z = radius = 0.0f;
  if (!rootGroup) return;
  const osg::BoundingSphere& bound = rootGroup->getBound();
  const osg::Vec3f c = bound.center();
  if (!bound.valid() || !std::isfinite(c.x()) || !std::isfinite(c.y()) || !std::isfinite(c.z()) ||
      !std::isfinite(bound.radius()))
    return;
  x = c.x();
  y = c.y();
  z = c.z();
  radius = bound.radius();
}

bool OSGSceneGraph::setSwitchChoice(const std::string& nodeName, int choice) {
  return registries.setSwitchChoice(nodeName, choice);
}

void OSGSceneGraph::setForegroundOverride(bool on, float r, float g, float b) {
  registries.setForegroundOverride(on, r, g, b);
}

std::vector<std::string> OSGSceneGraph::namedObjectsAt(int x, int y) {
  std::vector<std::string> names;
  if (!area || !view || !rootGroup) return names;
  // The camera still holds the matrices of the last frame, which is what the pointer is over.
  // Window coordinates count from the bottom, through the middle of the pixel.
  osg::ref_ptr<osgUtil::LineSegmentIntersector> picker =
      new osgUtil::LineSegmentIntersector(osgUtil::Intersector::WINDOW, x + 0.5, area->height() - y - 0.5);
  osgUtil::IntersectionVisitor visitor(picker.get());
  view->getCamera()->accept(visitor);
  if (!picker->containsIntersections()) return names;
  const osgUtil::LineSegmentIntersector::Intersection& hit = picker->getFirstIntersection();
  // The path ends with the drawable itself, which is a node in this runtime.
  const osg::NodePath& path = hit.nodePath;
  auto onPath = [&path](const osg::StateSet* state) {
    return std::any_of(path.begin(), path.end(), [state](const osg::Node* n) { return n->getStateSet() == state; });
  };

  // The most particular first: the shape's material and appearance, then the nodes from the
  // geometry up.
  struct Found {
    std::size_t rank;
    const std::string* name;
  };
  std::vector<Found> found;
  for (const NamedObject& named : registries.namedObjects()) {
    if (const osg::Node* node = named.node()) {
      const auto at = std::find(path.rbegin(), path.rend(), node);
      if (at != path.rend()) found.push_back({2 + static_cast<std::size_t>(at - path.rbegin()), &named.name});
    } else if (named.stateSet && onPath(named.stateSet.get())) {
      found.push_back({named.kind == NamedKind::Material ? 0u : 1u, &named.name});
    }
  }
  std::stable_sort(found.begin(), found.end(), [](const Found& a, const Found& b) { return a.rank < b.rank; });
  for (const Found& f : found) names.push_back(*f.name);
  return names;
}

void OSGSceneGraph::replaceScene(osg::ref_ptr<osg::Group> newRoot, osgSceneRegistry newRegistries) {
  if (!newRoot) return;
  registries = std::move(newRegistries);
  osg::ref_ptr<osg::Group> old = std::exchange(rootGroup, std::move(newRoot));
  if (view) view->setSceneData(rootGroup.get());
  if (old != rootGroup) retire(old.get());
}

void OSGSceneGraph::retire(osg::Group* old) {
  if (!old || !view || !area) return;
  const CurrentArea current(area.get());
  if (!current) return;
  osg::State* state = area->graphicsWindow()->getState();
  if (!state) return;
  CheckGlErrors("before a scene was retired");
  old->releaseGLObjects(state);
  osg::flushAllDeletedGLObjects(state->getContextID());
  // Each frame ends with the attributes back at the state's own defaults, but the vertex
  // arrays stay set, known to the state only by their addresses. A new scene's array at a
  // freed one's address would be taken as set already, and the driver would read the deleted
  // buffer's offset as a pointer into memory.
  if (state->getCurrentVertexArrayState()) {
    state->lazyDisablingOfVertexAttributes();
    state->applyDisablingOfVertexAttributes();
    state->unbindVertexBufferObject();
    state->unbindElementBufferObject();
  }
  CheckGlErrors("retiring a scene");
}

}  // namespace quillon
