#include "mapping/MaterialState.h"

#include <osg/BlendFunc>
#include <osg/Material>
#include <osg/StateSet>

#include "scenegraph/FaceCulling.h"
#include "scenegraph/GlValues.h"

namespace quillon {

namespace {

// The blend follows the material's own override flags, so that a quality material that
// overrides its subtree also makes the subtree transparent.
void UseBlending(osg::StateSet& stateSet, osg::StateAttribute::OverrideValue materialFlags) {
  const osg::StateAttribute::OverrideValue flags =
      osg::StateAttribute::ON | (materialFlags & (osg::StateAttribute::OVERRIDE | osg::StateAttribute::PROTECTED));
  osg::StateAttribute* blend = stateSet.getAttribute(osg::StateAttribute::BLENDFUNC);
  // The four-argument form keeps the framebuffer's alpha at 1.
  if (!blend) blend = new osg::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
  stateSet.setAttributeAndModes(blend, flags);
  stateSet.setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
  ShowBackFaces(stateSet);
}

void DropBlending(osg::StateSet& stateSet) {
  stateSet.removeAttribute(osg::StateAttribute::BLENDFUNC);
  stateSet.removeMode(GL_BLEND);
  stateSet.setRenderingHint(osg::StateSet::DEFAULT_BIN);
  LetClosedShapesCull(stateSet);
}

}  // namespace

void MakeMaterialDynamic(osg::Material& material) {
  material.setDataVariance(osg::Object::DYNAMIC);
  for (osg::StateSet* stateSet : material.getParents()) stateSet->setDataVariance(osg::Object::DYNAMIC);
}

void SetMaterialOpacity(osg::Material& material, float opacity) {
  opacity = GlOpacity(opacity);
  material.setAlpha(osg::Material::FRONT_AND_BACK, opacity);
  for (osg::StateSet* stateSet : material.getParents()) {
    const auto* pair = stateSet->getAttributePair(osg::StateAttribute::MATERIAL);
    if (!pair || pair->first.get() != &material) continue;
    if (opacity < 1.0f)
      UseBlending(*stateSet, pair->second);
    else
      DropBlending(*stateSet);
  }
}

}  // namespace quillon
