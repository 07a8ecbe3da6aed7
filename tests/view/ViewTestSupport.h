#pragma once
// What the window tests of quillon view share: the application, documents and messages.

#include <QApplication>
#include <QTest>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "MessageBuilder.h"
#include "channels/ChannelStream.h"

namespace quillon::app::test {

/// Never destroyed: at exit Qt's own statics may be gone before its clean-up routines run.
inline QApplication& app() {
  static int argc = 1;
  static char name[] = "test_view_window";
  static char* argv[] = {name, nullptr};
  static QApplication* const application = new QApplication(argc, argv);
  return *application;
}

/// Shows a window and waits until the window system has put it on the screen and activated it.
inline bool showActive(QWidget& window) {
  window.show();
  window.activateWindow();
  return QTest::qWaitForWindowExposed(&window) && QTest::qWaitForWindowActive(&window);
}

inline std::string example(const char* name) {
  std::ifstream in(std::string(QUILLON_EXAMPLES_DIR "/") + name, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

inline std::vector<ChannelStreamRecord> robotArmStream() {
  std::ifstream in(QUILLON_EXAMPLES_DIR "/robot_arm.qcs", std::ios::binary);
  std::vector<ChannelStreamRecord> records;
  ChannelStreamReader::ReadAll(in, records);
  return records;
}

/// A message for basic.xml's group Probe1[2]: the probe's position (3D) and its colour (1D), each
/// with its quality, status and time stamp.
inline std::vector<unsigned char> probeMessage(double x, double y, double z, double positionQuality, double colour,
                                               double colourQuality) {
  ::quillon::test::MessageBuilder m;
  m.Header(0x0001 | 0x0004 | 0x0008 | 0x0010, "Probe1", 2, 2);
  m.U8(2).F64(x).F64(y).F64(z).F64(positionQuality).U32(0).U32(4711);
  m.U8(1).F64(colour).F64(colourQuality).U32(3).U32(4712);
  return m.bytes;
}

}  // namespace quillon::app::test
