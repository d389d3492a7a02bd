// Pictures of a drawn person.
#pragma once

#include <opencv2/core.hpp>

namespace krv::test {

// The size in which the plug-in of the effects hands frames over.
inline const cv::Size kPictureSize(284, 160);

// A room without anybody: CV_8UC4. Its colours are of the level `light`, 0 to 255.
cv::Mat EmptyRoom(double light = 170);

// The pixels of a person whose feet stand at `feet`: CV_8UC1 of the picture's size, 255 or 0.
cv::Mat PersonMatte(const cv::Point& feet, int height);

// Draws that person into a picture.
void DrawPerson(cv::Mat& picture, const cv::Point& feet, int height);

}  // namespace krv::test
