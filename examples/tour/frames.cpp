#include "examples/tour/frames.h"

#include "examples/tour/format_text.h"
#include "utils/platform/platform.h"

namespace tour {
namespace {

constexpr int kFrames = 5;
constexpr double kFrameTime = 0.020;            // seconds
constexpr double kWorkTime = 0.005;             // seconds
constexpr double kMicrosecondsPerSecond = 1e6;  // usleep takes microseconds
constexpr double kMillisecondsPerSecond = 1e3;

struct Frame {
  double begin;     // the clock of the frame
  double workTime;  // by the clock that runs on
  bool stoodStill;  // the clock of the frame, while the work was done
};

Frame RunFrame() {
  AnimationInterval::updateTime();
  const WaitTime frameTime(kFrameTime);
  Frame frame = {
      .begin = AnimationInterval::getCurrentTime(), .workTime = 0.0, .stoodStill = false};
  usleep(kWorkTime * kMicrosecondsPerSecond);  // what a frame has to draw
  frame.workTime = getPreciseTime() - frame.begin;
  frame.stoodStill = AnimationInterval::getCurrentTime() == frame.begin;
  while (!frameTime.IsTimeOver()) usleep(kMicrosecondsPerSecond / 1000.0);
  return frame;
}

}  // namespace

std::string FramesText() {
  std::string text = "  Frame   begins at, in seconds   after the last one   its work\n";
  bool stoodStill = true;
  double last = 0.0;
  for (int number = 1; number <= kFrames; ++number) {
    const Frame frame = RunFrame();
    const std::string interval =
        number == 1 ? std::string(7, ' ') + "-"
                    : FormatText("%5.1f ms", (frame.begin - last) * kMillisecondsPerSecond);
    text += FormatText("  %5d   %21.6f   %18s   %5.1f ms\n", number, frame.begin, interval.c_str(),
                       frame.workTime * kMillisecondsPerSecond);
    stoodStill = stoodStill && frame.stoodStill;
    last = frame.begin;
  }
  return text +
         "  Seconds count from the loading of the library. Inside a frame AnimationInterval " +
         (stoodStill ? "stands\n  still: all that is drawn in it sees one time.\n"
                     : "has\n  moved: something else has updated it.\n");
}

}  // namespace tour
