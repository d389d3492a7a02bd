
// What a pixel needs to find its place on the plane.
void aimAtRing() {
  eye = cameraPlace();
  v_eye = eye.yz;
  mat3 axes = getCameraVector(eye);
  v_centre = ringCentre();
  v_right = axes[0];
  v_down = axes[1];
  v_forward = axes[2] * FOCAL_LENGTH * iResolution.y;
}

void separateItems(float degrees) {
  v_gap = degrees;
  v_step = unitVector(radians(degrees));
  v_first = first_entry;
}

// Where figures between these radii are seen, up to this distance. A negative radius lies on the
// other side of the centre.
void setBand(vec2 radii, float seen) {
  vec2 sizes = abs(radii);
  radii = vec2(radii.x * radii.y > 0.0 ? min(sizes.x, sizes.y) : 0.0, max(sizes.x, sizes.y));
  v_band = vec2(radii.x + radii.y, radii.y - radii.x + 2.0 * seen) * 0.5;
}
