#pragma once
// Where the program puts the camera when the user does not: the whole scene, through the
// whole stream, in view from a three-quarter direction.

#include <array>
#include <string>
#include <vector>

#include "channels/ChannelStream.h"

namespace quillon::app {

/// A box round what a scene showed, in metres, aligned with the axes.
struct SceneBounds {
  double low[3] = {0, 0, 0};
  double high[3] = {0, 0, 0};
  bool valid() const { return high[0] >= low[0] && high[1] >= low[1] && high[2] >= low[2] && !empty; }
  bool empty = true;
};

/// The six camera texts of SetCameraPosition_v1: position, orientation, near, far, focal, zoom.
using CameraTexts = std::array<std::string, 6>;

/// Loads the document into a viewer of its own, without a window, replays the messages through
/// it and returns the bounds of everything the scene showed on the way, the start included.
SceneBounds MotionBounds(const std::string& xml, const std::vector<ChannelStreamRecord>& records);

/// The orientation text of a camera at `eye` that looks at `target` (metres): a turn about the
/// vertical axis, then a tilt about the camera's own horizontal axis, so the horizon stays level.
std::string LookAt(const double eye[3], const double target[3]);

/// A camera that looks at the middle of the bounds from the front, a little from the right and
/// above (the demo's view of the robot arm), just far enough back that every corner of them fits
/// a view of that width / height with a margin. Empty bounds count as a metre round the origin.
CameraTexts FrameThreeQuarter(const SceneBounds& bounds, double aspect);

/// Splits the text of --camera, "POSITION;ORIENTATION;NEAR;FAR;FOCAL;ZOOM", into its six texts;
/// a missing or empty one stays empty (the viewer's default). False for more than six.
bool SplitCameraOption(const std::string& text, CameraTexts& texts);

}  // namespace quillon::app
