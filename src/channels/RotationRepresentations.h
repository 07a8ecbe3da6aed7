#pragma once
// The representations in which an orientation can be given, as vocabulary of the value library.

#include <array>
#include <string_view>

namespace quillon {

/// One representation: its name and the names of its components, in order.
struct RotationRepresentation {
  std::string_view name;
  std::array<std::string_view, 9> components;
  int componentCount;
};

inline constexpr std::array<RotationRepresentation, 13> kRotationRepresentations{{
    {"none", {}, 0},
    {"quaternion", {"q1", "q2", "q3", "q4"}, 4},
    {"screw", {"rx", "ry", "rz"}, 3},
    {"roll-pitch-yaw", {"roll", "pitch", "yaw"}, 3},
    {"zyz-euler", {"Z", "Y", "Zdot"}, 3},
    {"zxy-euler", {"Z", "X", "Y"}, 3},
    {"abc-rcm", {"A", "B", "C"}, 3},
    {"abc-krc", {"A", "B", "C"}, 3},
    {"alpha-beta-gamma", {"alpha", "beta", "gamma"}, 3},
    {"matrix-columnwise", {"r11", "r21", "r31", "r12", "r22", "r32", "r13", "r23", "r33"}, 9},
    {"matrix-rowwise", {"r11", "r12", "r13", "r21", "r22", "r23", "r31", "r32", "r33"}, 9},
    {"yzx-euler", {"Y", "Z", "X"}, 3},
    {"steer-camber-spin", {"steer", "camber", "spin"}, 3},
}};

}  // namespace quillon
