#include "mapping/ZrSceneMapping3D.h"

#include "channels/ZrValue3D.h"
#include "mapping/QualityColors.h"
#include "mapping/ScaledFloat.h"

namespace quillon {

ZrSceneMapping3D::ZrSceneMapping3D(ITranslationProperty* t, float s, IMaterialProperty* m)
    : scale(s), translation(Ref<ITranslationProperty>::Share(t)), quality(m) {}

ZrSceneMapping::State ZrSceneMapping3D::StateOf(const ZrValue3D& value, float& x, float& y, float& z) const {
  const bool finite =
      ScaledFloat(value.X(), scale, x) && ScaledFloat(value.Y(), scale, y) && ScaledFloat(value.Z(), scale, z);
  return finite ? ZrSceneMapping::StateOf(value.GetQuality()) : kNotMeaningful;
}

ZrSceneMapping3DFreeze::ZrSceneMapping3DFreeze(ITranslationProperty* t, float s, IMaterialProperty* m)
    : ZrSceneMapping3D(t, s, m) {}

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

ZrSceneMapping3DHide::ZrSceneMapping3DHide(ITranslationProperty* t, float s, IMaterialProperty* m, ISwitchProperty* sw)
    : ZrSceneMapping3D(t, s, m), visibility(sw) {}

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
