#include "mapping/ZrSceneMapping6D.h"

#include <cmath>
#include <utility>

#include "channels/ZrValue6D.h"
#include "mapping/QualityColors.h"
#include "mapping/ScaledFloat.h"

namespace quillon {

ZrSceneMapping6D::ZrSceneMapping6D(Ref<ITranslationProperty> t, Ref<IRotationProperty> r, float s,
                                   Ref<IMaterialProperty> m)
    : scale(s), translation(std::move(t)), rotation(std::move(r)), quality(std::move(m)) {}

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

ZrSceneMapping6DFreeze::ZrSceneMapping6DFreeze(Ref<ITranslationProperty> t, Ref<IRotationProperty> r, float s,
                                               Ref<IMaterialProperty> m)
    : ZrSceneMapping6D(std::move(t), std::move(r), s, std::move(m)) {}

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

ZrSceneMapping6DHide::ZrSceneMapping6DHide(Ref<ITranslationProperty> t, Ref<IRotationProperty> r, float s,
                                           Ref<IMaterialProperty> m, Ref<ISwitchProperty> sw)
    : ZrSceneMapping6D(std::move(t), std::move(r), s, std::move(m)), visibility(std::move(sw)) {}

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
