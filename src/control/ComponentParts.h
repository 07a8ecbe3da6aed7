#pragma once
// The collaborators that a viewer component is made with.

#include <functional>
#include <memory>

#include "channels/IChannelgroupDecoder.h"
#include "scenegraph/IRenderArea.h"
#include "scenegraph/ISceneGraphImplementor.h"
#include "visualisation/IDocumentParser.h"

namespace quillon {

class OSGSceneGraph;

/// Makes the render area for a window: parent 0 asks for an offscreen one.
using RenderAreaFactory = std::function<std::unique_ptr<IRenderArea>(unsigned long parent, int width, int height)>;

/// Everything a QuillonComponent drives. Any part may be missing; the operations that need
/// it then do nothing.
struct ComponentParts {
  std::unique_ptr<IChannelgroupDecoder> decoder;
  std::unique_ptr<IDocumentParser> parser;
  ISceneGraphImplementor* sceneGraph = nullptr;  // process-wide, not owned
  RenderAreaFactory makeRenderArea;
};

/// The parts of the real viewer: the decoder, the document reader, the shared scene-graph
/// holder and the render areas that this build can make.
ComponentParts MakeDefaultParts();

/// Readies a scene-graph holder of the caller's own and returns the parts of a viewer over it,
/// without windows: for loading and playing a document beside the scene that is shown.
ComponentParts MakeWindowlessParts(OSGSceneGraph& holder);

}  // namespace quillon
