
// The folded halo shaders. Angles are rounded as in the plain form: a pixel may lie right between two
// items.

varying vec2 v_centre;   // of the ring in the picture, pixels
varying vec3 v_right;    // what a pixel to the right, or down, adds to the ray of the centre
varying vec3 v_down;
varying vec3 v_forward;  // the ray of the centre, of any length
varying vec2 v_eye;      // y and z of the camera's place
varying vec2 v_turn;     // added to the angle of a place for the one on the figure, radians, and to
                         // that of its colour, degrees
varying float v_gap;     // from item to item, degrees
varying vec2 v_step;     // the same, as a unit vector
varying float v_first;   // the table's first item
