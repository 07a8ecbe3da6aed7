#include "mapping/ZrSceneMapping6D.h"

#include <cmath>

#include "channels/ZrValue6D.h"
#include "mapping/QualityColors.h"
#include "mapping/ScaledFloat.h"

namespace quillon {

ZrSceneMapping6D::ZrSceneMapping6D(ITranslationProperty* t, IRotationProperty* r, float s, IMaterialProperty* m)
    : scale(s),
      translation(Ref<ITranslationProperty>::Share(t)),
      rotation(Ref<IRotationProperty>::Share(r)),
      quality(m) {}

ZrSceneMapping::State ZrSceneMapping6D::StateOf(const ZrValue6D& value, float (&position)[3],
                                                RotationMatrix& matrix) const {
  bool finite = true;
  for (std::size_t row = 0; row < 3; ++row) {
    finite &= ScaledFloat(value.Position(row), scale, position[row]);
    for (std::size_t column = 0; column < 3; ++column)
      finite &= ScaledFloat(value.Rotation(row, column), 1.0f, matrix[row * 3 + column]);
  }
  return finite ? ZrSceneMapping::StateOf(value.GetQuality()) : kNotMeaningful;
}

void ZrSceneMapping6D::Show(State next, const float (&position)[3], const RotationMatrix& matrix) {
  if (translation) translation->SetTranslation(position[0], position[1], position[2]);
  if (rotation) rotation->SetRotation(matrix);
  if (next == kNominal)
    quality.ShowNominal();
  else
    quality.ShowMeaningful();
}

ZrSceneMapping6DFreeze::ZrSceneMapping6DFreeze(ITranslationProperty* t, IRotationProperty* r, float s,
                                               IMaterialProperty* m)
    : ZrSceneMapping6D(t, r, s, m) {}

void ZrSceneMapping6DFreeze::ValueDecoded(ZrValue6D* value) {
  if (!value) return;
  float position[3] = {0, 0, 0};
  RotationMatrix matrix{};
  const State next = StateOf(*value, position, matrix);
  NotifyStateChange(state, next);
  if (next == kNotMeaningful) {
    quality.ShowNotMeaningful();
  } else {
    Show(next, position, matrix);
  }
  state = next;
}

ZrSceneMapping6DHide::ZrSceneMapping6DHide(ITranslationProperty* t, IRotationProperty* r, float s, IMaterialProperty* m,
                                           ISwitchProperty* sw)
    : ZrSceneMapping6D(t, r, s, m), visibility(sw) {}

void ZrSceneMapping6DHide::ValueDecoded(ZrValue6D* value) {
  if (!value) return;
  float position[3] = {0, 0, 0};
  RotationMatrix matrix{};
  const State next = StateOf(*value, position, matrix);
  NotifyState1Change(state, next);
  if (next == kNotMeaningful) {
    visibility.Hide();
  } else {
    Show(next, position, matrix);
    visibility.Show();
  }
  state = next;
}

}  // namespace quillon
