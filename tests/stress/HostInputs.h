#pragma once
// What a host may hand the viewer: documents, channel messages, camera texts, node names and
// numbers, good and bad, all drawn from one random engine so that a seed makes them again.

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace quillon::stress {

using Random = std::mt19937_64;

enum class Kind { D1, D3, D6, Time };

/// A route that a document names in good form (it may still bind to nothing in the scene).
struct Route {
  std::string name;
  std::int32_t group = 0;
  std::uint32_t channel = 0;
  Kind kind = Kind::D1;
};

/// A document with what its host knows about it.
struct Document {
  std::string xml;
  std::vector<Route> routes;
  std::vector<std::string> names;  // DEF names of its scene
};

/// Files of the source tree that hosts really send: example documents, VRML files and
/// recorded messages. Missing folders are passed over.
struct RealInputs {
  std::vector<std::string> documents;
  std::vector<std::vector<unsigned char>> messages;
  static RealInputs Load(const std::string& sourceDir);
};

class InputMaker {
 public:
  InputMaker(Random& engine, const RealInputs& inputs) : random(engine), real(inputs) {}

  /// Any document: generated (mostly well-formed), real, mutated, an edge text or garbage.
  Document AnyDocument();
  /// A generated document in good form whose routes all bind.
  Document GoodDocument();

  /// A message that the document's routes expect, one group of it, in the kinds they name.
  std::vector<unsigned char> MessageFor(const Document& document);
  /// Any message: for this document or another, cut short, flipped, random or real.
  std::vector<unsigned char> AnyMessage(const Document& document, const Document& other);

  /// One of the six camera texts, slot 0 to 5, good or bad.
  std::string CameraText(int slot);
  /// A node name: one of the document's, a near miss, or nonsense.
  std::string NodeName(const Document& document);
  /// A float for a threshold or a colour: ordinary, edge, or not a number.
  float AnyFloat();
  double AnyDouble();
  /// A window size: mostly small, sometimes zero, negative, or at the limits.
  int WindowSize();

  int Pick(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(random); }
  bool Chance(int percent) { return Pick(0, 99) < percent; }
  template <class T>
  const T& OneOf(const std::vector<T>& v) {
    return v[static_cast<std::size_t>(Pick(0, static_cast<int>(v.size()) - 1))];
  }

 private:
  std::string Number();
  std::string Numbers(int n);
  std::string Name(const char* prefix);
  std::string Scene(Document& document, bool wellFormed);
  std::string Node(Document& document, int depth);
  std::string Shape(Document& document);
  std::string Geometry();
  std::string Children(Document& document, int depth);
  std::string RouteElement(Document& document, bool good);
  std::string From(const Route& route, bool good);
  std::string ColourMap(const char* element, bool invalidOnly);
  std::string EdgeText();
  std::string Mutated(std::string text);
  void Forget();

  Random& random;
  const RealInputs& real;
  std::vector<std::string> transforms, materials, switches, groups, targets;
  int nextName = 0;
  bool allowUse = true;
};

}  // namespace quillon::stress
