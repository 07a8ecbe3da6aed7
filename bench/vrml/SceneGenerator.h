#pragma once
// Deterministic VRML97 scenes for the reader's benchmark, in the writing style the reader needs:
// the exact header line and white space after every closing brace and bracket.

#include <string>

namespace quillon::bench {

/// One IndexedFaceSet of `triangles` triangles over a grid of vertices (1,000,000: about 44 MB).
std::string meshScene(int triangles = 1000000);

/// 100 Groups of 100 Transforms, each holding a Shape with a Material and a Box, Sphere, Cone
/// or Cylinder (about 5 MB).
std::string partsScene(int groups = 100, int partsPerGroup = 100);

/// Chains of Transforms nested `depth` deep, each level with a small Shape (about 5 MB).
std::string chainsScene(int chains = 50, int depth = 200);

}  // namespace quillon::bench
