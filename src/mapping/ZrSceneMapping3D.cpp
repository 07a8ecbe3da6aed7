#include "mapping/ZrSceneMapping3D.h"

#include <utility>

#include "channels/ZrValue3D.h"
#include "mapping/QualityColors.h"
#include "mapping/ScaledFloat.h"

namespace quillon {

ZrSceneMapping3D::ZrSceneMapping3D(Ref<ITranslationProperty> t, float s, Ref<IMaterialProperty> m)
    : scale(s), translation(std::move(t)), quality(std::move(m)) {}

ZrSceneMapping::State ZrSceneMapping3D::StateOf(const ZrValue3D& value, float& x, float& y, float& z) const {
  const bool finite =
      ScaledFloat(value.X(), scale, x) && ScaledFloat(value.Y(), scale, y) && ScaledFloat(value.Z(), scale, z);
  return finite ? ZrSceneMapping::StateOf(value.GetQuality()) : kNotMeaningful;
}

ZrSceneMapping3DFreeze::ZrSceneMapping3DFreeze(Ref<ITranslationProperty> t, float s, Ref<IMaterialProperty> m)
    : ZrSceneMapping3D(std::move(t), s, std::move(m)) {}

void ZrSceneMapping3DFreeze::ValueDecoded(ZrValue3D* value) {
  if (!value) return;
  float x = 0, y = 0, z = 0;
  const State next = StateOf(*value, x, y, z);
  NotifyStateChange(state, next);
  if (next == kNominal && GetNotNominalCount() == 0 && GetNotMeaningfulCount() == 0) {
    if (translation) translation->SetTranslation(x, y, z);
    quality.ShowNominal();
  } else if (next == kNotMeaningful || GetNotMeaningfulCount() > 0) {
    quality.ShowNotMeaningful();
  } else {
    if (translation) translation->SetTranslation(x, y, z);
    quality.ShowMeaningful();
  }
  state = next;
}

ZrSceneMapping3DHide::ZrSceneMapping3DHide(Ref<ITranslationProperty> t, float s, Ref<IMaterialProperty> m,
                                           Ref<ISwitchProperty> sw)
    : ZrSceneMapping3D(std::move(t), s, std::move(m)), visibility(std::move(sw)) {}

void ZrSceneMapping3DHide::ValueDecoded(ZrValue3D* value) {
  if (!value) return;
  float x = 0, y = 0, z = 0;
  const State next = StateOf(*value, x, y, z);
  NotifyState1Change(state, next);
  if (next == kNotMeaningful) {
    visibility.Hide();
  } else {
    if (translation) translation->SetTranslation(x, y, z);
    if (next == kNominal && GetNotNominalCount() == 0)
      quality.ShowNominal();
    else
      quality.ShowMeaningful();
    visibility.Show();
  }
  state = next;
}

}  // namespace quillon
