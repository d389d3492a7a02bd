// Where a folded figure of the flat shader can be seen.
#pragma once

namespace krv {

class DrawUniforms;
struct FoldedFigure;

// Adds the boxes of the items of a figure that FoldFlat has folded from the same uniforms, with
// what can be seen around them, to the figure's `seen`. False where the figure may be seen
// anywhere: turned, glowing, pulses.
bool AddSeenItems(DrawUniforms& uniforms, FoldedFigure& figure);

}  // namespace krv
