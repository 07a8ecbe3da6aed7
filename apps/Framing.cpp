#include "Framing.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <osg/BoundingBox>
#include <osg/ComputeBoundsVisitor>

#include "control/QuillonComponent.h"
#include "scenegraph/OSGSceneGraph.h"

namespace quillon::app {
namespace {

// The scene is in millimetres, the host's side in metres.
constexpr double kToMetres = 0.001;

// The demo's view of the robot arm: from the front, a little from the right and above.
constexpr double kEye[3] = {0.3, 0.35, 0.85}, kTarget[3] = {0.0, 0.14, 0.0};
// How much room the bounds get round them in the view.
constexpr double kMargin = 1.15;

// What the scene shows now: switched-off children do not count.
osg::BoundingBox ShownBy(OSGSceneGraph& holder) {
  osg::ComputeBoundsVisitor visitor(osg::NodeVisitor::TRAVERSE_ACTIVE_CHILDREN);
  if (holder.root()) holder.root()->accept(visitor);
  return visitor.getBoundingBox();
}

std::string Format(double a, double b, double c) {
  char text[160];
  std::snprintf(text, sizeof text, "%.6f %.6f %.6f", a, b, c);
  return text;
}

std::string Format(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.6f", value);
  return text;
}

}  // namespace

SceneBounds MotionBounds(const std::string& xml, const std::vector<ChannelStreamRecord>& records) {
  // A holder of its own: the one that the program shows stays untouched.
  OSGSceneGraph holder;
  QuillonComponent component(MakeWindowlessParts(holder));

  std::string annotated, groups;
  SceneBounds bounds;
  if (component.LoadDocument(xml, annotated, groups) != 0) return bounds;
  osg::BoundingBox all = ShownBy(holder);
  for (const ChannelStreamRecord& record : records) {
    component.SendChannels(record.message.data(), record.message.size());
    all.expandBy(ShownBy(holder));
  }
  if (!all.valid()) return bounds;
  for (int i = 0; i < 3; ++i) {
    bounds.low[i] = static_cast<double>(all._min[i]) * kToMetres;
    bounds.high[i] = static_cast<double>(all._max[i]) * kToMetres;
    if (!std::isfinite(bounds.low[i]) || !std::isfinite(bounds.high[i])) return bounds;
  }
  bounds.empty = false;
  return bounds;
}

std::string LookAt(const double eye[3], const double target[3]) {
  const double d[3] = {target[0] - eye[0], target[1] - eye[1], target[2] - eye[2]};
  const double length = std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
  const double yaw = std::atan2(-d[0], -d[2]);
  const double pitch = std::asin(d[1] / length);
  const double cy = std::cos(yaw / 2), sy = std::sin(yaw / 2), cp = std::cos(pitch / 2), sp = std::sin(pitch / 2);
  const double q[4] = {cy * sp, sy * cp, -sy * sp, cy * cp};  // yaw * pitch
  const double angle = 2.0 * std::acos(q[3]);
  const double s = std::sqrt(1.0 - q[3] * q[3]);
  if (s < 1e-9) return "0 1 0 0";
  return Format(q[0] / s, q[1] / s, q[2] / s) + " " + Format(angle);
}

CameraTexts FrameThreeQuarter(const SceneBounds& bounds, double aspect) {
  // The camera's axes: forward towards the target, right level with the ground, up.
  osg::Vec3d forward(kTarget[0] - kEye[0], kTarget[1] - kEye[1], kTarget[2] - kEye[2]);
  forward.normalize();
  osg::Vec3d right = forward ^ osg::Vec3d(0, 1, 0);
  right.normalize();
  const osg::Vec3d up = right ^ forward;

  // The camera's field of view at zoom 1 is vertical; the width follows from the aspect ratio.
  double fieldOfView = 0;
  osgCamera().getFieldOfView(fieldOfView);
  const double tanHeight = std::tan(fieldOfView / 2) / kMargin;
  const double tanWidth = std::tan(fieldOfView / 2) * (aspect > 0 ? aspect : 1.0) / kMargin;

  const bool given = bounds.valid();
  const osg::Vec3d low = given ? osg::Vec3d(bounds.low[0], bounds.low[1], bounds.low[2]) : osg::Vec3d(-1, -1, -1);
  const osg::Vec3d high = given ? osg::Vec3d(bounds.high[0], bounds.high[1], bounds.high[2]) : osg::Vec3d(1, 1, 1);
  const osg::Vec3d centre = (low + high) * 0.5;
  // Far enough back that every corner lies inside the narrowed view, and in front of the camera.
  double distance = 0;
  for (int corner = 0; corner < 8; ++corner) {
    const osg::Vec3d p(corner & 1 ? high.x() : low.x(), corner & 2 ? high.y() : low.y(),
                       corner & 4 ? high.z() : low.z());
    const osg::Vec3d offset = p - centre;
    const double depth = offset * forward;
    distance = std::max({distance, std::abs(offset * right) / tanWidth - depth,
                         std::abs(offset * up) / tanHeight - depth, 0.01 - depth});
  }
  const double size = (high - low).length();
  distance = std::max(distance, 0.01);

  const osg::Vec3d eye = centre - forward * distance;
  const double eyeAt[3] = {eye.x(), eye.y(), eye.z()}, targetAt[3] = {centre.x(), centre.y(), centre.z()};
  return {
      Format(eye.x(), eye.y(), eye.z()), LookAt(eyeAt, targetAt), Format(std::max(distance - size, distance * 0.001)),
      Format(distance + size),           Format(distance),        "1.0"};
}

bool SplitCameraOption(const std::string& text, CameraTexts& texts) {
  texts = {};
  std::size_t start = 0;
  for (std::size_t i = 0;; ++i) {
    const std::size_t end = text.find(';', start);
    if (i == texts.size()) return false;
    texts[i] = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
    if (end == std::string::npos) return true;
    start = end + 1;
  }
}

}  // namespace quillon::app
