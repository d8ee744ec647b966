/// The one light of the scene: it falls from straight above the top edge, so upper edges shine and shadows
/// lie below.
#ifndef VARNO_RESOURCES_ARTWORK_LIGHT_H
#define VARNO_RESOURCES_ARTWORK_LIGHT_H

#include "Artwork/Painter.h"

namespace varno {

/// The soft shadow that a round body of this height (in pixels) throws.
void castShadow(Painter& painter, Point center, double radius, double height);

/// The soft shadow that a body with rounded corners throws.
void castShadow(Painter& painter, const Box& body, double cornerRadius, double height);

/// A hollow in the panel: dark below its upper edge, a shine on its lower one.
void recess(Painter& painter, const Box& hollow, double cornerRadius, Color floor);

/// A body with rounded corners that stands out of the panel.
void raised(Painter& painter, const Box& body, double cornerRadius, Color top, Color bottom);

} // namespace varno

#endif
