/* The message encoder as a C99 host compiles it: the worked example of the channel-group
   message, byte for byte, and the quality extension's record layout. */
#include <stdio.h>
#include <string.h>

#include "quillon/quillon_message.h"

static int failures = 0;
#define CHECK(cond)                                              \
  do {                                                           \
    if (!(cond)) {                                               \
      fprintf(stderr, "%s:%d: %s\n", __FILE__, __LINE__, #cond); \
      ++failures;                                                \
    }                                                            \
  } while (0)

/* flags 0x000D, "Arm1", group 2: a 1D, a 3D and a 6D record, status 0, time stamp 1000 */
static const unsigned char kHead[] = {0x0D, 0x00, 0x04, 0x00, 0x41, 0x72, 0x6D, 0x31,
                                      0x02, 0x00, 0x00, 0x00, 0x03, 0x00, 0x01};
static const unsigned char kOnePointFive[] = {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xF8, 0x3F};
static const unsigned char kTail[] = {0x00, 0x00, 0x00, 0x00, 0xE8, 0x03, 0x00, 0x00};

int main(void) {
  unsigned char buffer[200];
  QuillonMessage m;
  const double position[3] = {1.0, 2.0, 3.0};
  const double identity[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  const unsigned int flags = QUILLON_MESSAGE_VALUES | QUILLON_MESSAGE_STATUS | QUILLON_MESSAGE_TIMESTAMP;

  memset(buffer, 0xEE, sizeof buffer);
  CHECK(quillon_message_begin(&m, buffer, 169, "Arm1", 2, flags) == QUILLON_MESSAGE_OK);
  CHECK(quillon_message_add_1d(&m, 1.5, 0, 1000, 0.0) == QUILLON_MESSAGE_OK);
  CHECK(quillon_message_add_3d(&m, 10.0, 20.0, 30.0, 0, 1000, 0.0) == QUILLON_MESSAGE_OK);
  CHECK(quillon_message_add_6d(&m, position, identity, 0, 1000, 0.0) == QUILLON_MESSAGE_OK);
  CHECK(quillon_message_add_time(&m, 1.0, 0, 1000, 0.0) == QUILLON_MESSAGE_NO_ROOM);
  CHECK(quillon_message_failed(&m) == QUILLON_MESSAGE_NO_ROOM);
  CHECK(quillon_message_size(&m) == 169);
  CHECK(memcmp(buffer, kHead, sizeof kHead) == 0);
  CHECK(memcmp(buffer + 15, kOnePointFive, 8) == 0);
  CHECK(memcmp(buffer + 23, kTail, 8) == 0);
  CHECK(buffer[31] == 2 && buffer[64] == 3);
  CHECK(memcmp(buffer + 161, kTail, 8) == 0);
  CHECK(buffer[169] == 0xEE);

  /* With the quality bit each record carries one more double before status and time stamp. */
  CHECK(quillon_message_begin(&m, buffer, sizeof buffer, "Arm1", 2, flags | QUILLON_MESSAGE_QUALITY) == 0);
  CHECK(quillon_message_add_1d(&m, 1.5, 0, 1000, 1.5) == QUILLON_MESSAGE_OK);
  CHECK(quillon_message_size(&m) == 14 + 1 + 8 + 8 + 4 + 4);
  CHECK(buffer[0] == 0x1D);
  CHECK(memcmp(buffer + 23, kOnePointFive, 8) == 0);
  CHECK(memcmp(buffer + 31, kTail, 8) == 0);
  CHECK(quillon_message_record_size(QUILLON_MESSAGE_VALUES, QUILLON_MESSAGE_6D) == 97);

  if (failures == 0) printf("message encoder: all checks passed\n");
  return failures == 0 ? 0 : 1;
}
