#pragma once
// How quillon view words a route's value, its quality and the hover tooltip.

#include <QString>
#include <chrono>

#include "widget/QuillonWidget.h"

namespace quillon::app {

/// Where a quality falls against the two thresholds.
enum class QualityBand { Nominal, Between, NotMeaningful };

/// At or below the nominal threshold: nominal; at or below the meaningful one: between; anything
/// else, a quality that is not a number among it, is not meaningful.
QualityBand BandOf(double quality, float nominal, float meaningful);

/// A threshold as the legend and the tooltip write it: "100", "0.5", "∞".
QString ThresholdText(float threshold);

/// What the band means under these thresholds, e.g. "nominal (≤ 0)".
QString BandText(QualityBand band, float nominal, float meaningful);

/// The newest value: a number, a vector "(x, y, z)", or a frame as its position and the turn of
/// its rotation about an axis. "none yet" before the first value.
QString ValueText(const RouteState& route);

/// How long ago something happened, e.g. "0.4 s ago", "3 min 5 s ago".
QString AgeText(std::chrono::steady_clock::duration age);

/// The tooltip of a hovered part, as rich text: the node's DEF name, then for each route its
/// channel and target, its newest value, its quality and what that means, its status and time
/// stamp, and how long ago it last changed.
QString RouteTooltip(const RoutePick& pick, float nominal, float meaningful, std::chrono::steady_clock::time_point now);

/// "Arm[1][0][3D] → Base.translation"
QString RouteTitle(const RouteState& route);

}  // namespace quillon::app
