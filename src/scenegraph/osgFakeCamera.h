#pragma once
// The camera that stands in while no window is attached.

#include "scenegraph/ICamera.h"

namespace quillon {

/// Does nothing: setters ignore their arguments, getters leave their outputs untouched.
class osgFakeCamera final : public ICamera {
 public:
  void setPosition(double, double, double) override {}
  void setOrientation(double, double, double, double) override {}
  void setOrientationAxisAngle(double, double, double, double) override {}
  void setNearDistance(double) override {}
  void setFarDistance(double) override {}
  void setFocalDistance(double) override {}
  void setFieldOfView(double) override {}
  void getPosition(double&, double&, double&) const override {}
  void getOrientation(double&, double&, double&, double&) const override {}
  void getOrientationAxisAngle(double&, double&, double&, double&) const override {}
  void getNearDistance(double&) const override {}
  void getFarDistance(double&) const override {}
  void getFocalDistance(double&) const override {}
  void getFieldOfView(double&) const override {}
  void getViewToWorldMatrix(float[16]) const override {}
  void zoom(double) override {}
  void zoomToSphere(double, double, double, double) override {}
  void rotateX(double) override {}
  void rotateY(double) override {}
  void rotateZ(double) override {}
  void setAspectRatio(double) override {}
  void getZoomFactor(double&) const override {}
  void setZoomFactor(double) override {}
};

}  // namespace quillon
