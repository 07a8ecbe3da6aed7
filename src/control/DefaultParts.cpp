// The composition root of the viewer: the concrete parts of the layers below that a component is
// made of in this build. ErrorCatalogue.cpp does the same for the error tables.
#include "channels/QuillonChannelgroupDecoder.h"
#include "control/ComponentParts.h"
#include "mapping/osgSceneMappingBuilder.h"
#include "scenegraph/OSGSceneGraph.h"
#include "scenegraph/OffscreenRenderArea.h"
#include "ui/cSceneViewport.h"
#include "visualisation/ZrXMLParser.h"
#ifdef QUILLON_NATIVE_WINDOWS
#include "ui/qt/cEmbeddedViewer.h"
#endif

namespace quillon {

ComponentParts MakeDefaultParts() {
  ComponentParts parts;
  OSGSceneGraph& sceneGraph = OSGSceneGraph::Shared();
  if (!sceneGraph.viewportManipulator()) sceneGraph.setViewportManipulator(MakeViewportManipulator(sceneGraph));
  if (!sceneGraph.sceneMappingBuilder())
    sceneGraph.setSceneMappingBuilder(std::make_shared<osgSceneMappingBuilder>(sceneGraph));
  parts.sceneGraph = &sceneGraph;
  // Parent 0 asks for the offscreen area; a native parent window gets the Qt viewer window.
  parts.makeRenderArea = [&sceneGraph](unsigned long parent, int width, int height) -> std::unique_ptr<IRenderArea> {
    if (parent == 0) return OffscreenRenderArea::create(width, height);
#ifdef QUILLON_NATIVE_WINDOWS
    return cEmbeddedViewer::create(sceneGraph, parent, width, height);
#else
    (void)sceneGraph;
    return nullptr;
#endif
  };
  parts.decoder = std::make_unique<QuillonChannelgroupDecoder>();
  parts.parser = std::make_unique<ZrXMLParser>(&sceneGraph);
  return parts;
}

ComponentParts MakeWindowlessParts(OSGSceneGraph& holder) {
  holder.initialize();
  holder.setSceneMappingBuilder(std::make_shared<osgSceneMappingBuilder>(holder));
  ComponentParts parts;
  parts.decoder = std::make_unique<QuillonChannelgroupDecoder>();
  parts.parser = std::make_unique<ZrXMLParser>(&holder);
  parts.sceneGraph = &holder;
  return parts;
}

}  // namespace quillon
