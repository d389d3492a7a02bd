#include "neural_segmenter.h"

#include <array>
#include <cstdio>
#include <opencv2/core/utils/logger.hpp>
#include <opencv2/dnn.hpp>
#include <opencv2/imgproc.hpp>
#include <optional>

#include "krv/ai_filter.h"
#include "platform/file_system.h"

namespace krv {
namespace {

constexpr std::array kSides = {256, 320, 512, 192, 224, 384};  // pixels

constexpr size_t kMostBytes = size_t{1} << 30;

// OpenCV logs some errors before it throws them; what is thrown is reported here.
class ScopedSilence {
 public:
  ScopedSilence() : level_(cv::utils::logging::setLogLevel(cv::utils::logging::LOG_LEVEL_SILENT)) {}
  ScopedSilence(const ScopedSilence&) = delete;
  ScopedSilence& operator=(const ScopedSilence&) = delete;
  ~ScopedSilence() { cv::utils::logging::setLogLevel(level_); }

 private:
  const cv::utils::logging::LogLevel level_;
};

class NeuralSegmenter final : public Segmenter {
 public:
  // Throws when the bytes are not a network of the form that the header describes.
  explicit NeuralSegmenter(const std::string& bytes)
      : network_(cv::dnn::readNetFromONNX(bytes.data(), bytes.size())), side_(FittingSide()) {}

  cv::Mat Segment(const cv::Mat& picture) override {
    cv::Mat likelihood;
    cv::resize(Likelihood(picture, side_), likelihood, picture.size(), 0, 0, cv::INTER_LINEAR);
    return likelihood > 0.5;
  }

 private:
  int FittingSide() {
    const cv::Mat black(16, 16, CV_8UC3, cv::Scalar::all(0));
    for (const int side : kSides) {
      try {
        Likelihood(black, side);
        return side;
      } catch (const cv::Exception&) {
        if (side == kSides.back()) throw;
      }
    }
    return 0;
  }

  // CV_32FC1, of the network's own size.
  cv::Mat Likelihood(const cv::Mat& picture, int side) {
    network_.setInput(
        cv::dnn::blobFromImage(picture, 1.0 / 255, {side, side}, {}, /*swapRB=*/true));
    const cv::Mat output = network_.forward();
    const bool fits = output.dims == 4 && output.type() == CV_32FC1 && output.size[0] == 1 &&
                      (output.size[1] == 1 || output.size[1] == 2) && output.total() > 0;
    if (!fits) CV_Error(cv::Error::StsUnmatchedSizes, "the output is not 1 x 1 or 1 x 2 pictures");
    const int planes = output.size[1];
    const auto plane = [&](int index) {
      return cv::Mat(output.size[2], output.size[3], CV_32FC1,
                     const_cast<float*>(output.ptr<float>(0, index)));
    };
    if (planes == 1) return plane(0).clone();
    cv::Mat difference;
    // Above 0.5 where the second is greater.
    cv::addWeighted(plane(1), 1, plane(0), -1, 0.5, difference);
    return difference;
  }

  cv::dnn::Net network_;
  int side_;
};

void Report(const std::string& path, const char* reason) {
  std::fprintf(stderr, "%s: not a usable network, people are found without it: %s\n", path.c_str(),
               reason);
}

}  // namespace

std::unique_ptr<Segmenter> LoadNeuralSegmenter(const std::string& folder) {
  if (folder.empty()) return nullptr;
  const std::string path = folder + "/" + kPersonModelFileName;
  try {
    const std::optional<std::string> bytes = platform::ReadFile(path, kMostBytes);
    if (!bytes) return nullptr;
    const ScopedSilence silence;
    return std::make_unique<NeuralSegmenter>(*bytes);
  } catch (const cv::Exception& error) {
    Report(path, error.err.c_str());
  } catch (const std::exception& error) {
    Report(path, error.what());
  }
  return nullptr;
}

}  // namespace krv
