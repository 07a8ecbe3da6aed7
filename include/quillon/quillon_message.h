/* Quillon: writing channel-group messages for quillon_SendChannels_v1.
 *
 * Header only, C99 and C++. Nothing here allocates: a message is written into the caller's
 * buffer, and every step checks that it fits. One message carries one channel group: a
 * header (flags, control path name, group number, channel count), then one record per
 * channel, in channel order, all with the same layout. Numbers are little-endian and packed;
 * values are IEEE 754 doubles.
 *
 *   unsigned char buffer[256];
 *   QuillonMessage m;
 *   quillon_message_begin(&m, buffer, sizeof buffer, "Probe1", 2,
 *                         QUILLON_MESSAGE_VALUES | QUILLON_MESSAGE_STATUS | QUILLON_MESSAGE_TIMESTAMP);
 *   quillon_message_add_3d(&m, 0.1, 0.0, 0.0, 0, 1000, 0.0);    channel 0, metres
 *   quillon_message_add_1d(&m, 0.5, 0, 1000, 0.0);             channel 1
 *   if (quillon_message_failed(&m) == 0)
 *     quillon_SendChannels_v1(ctrl, buffer, (long)quillon_message_size(&m));
 *
 * The status, time stamp and quality arguments of the add functions are written only when
 * the message's flags ask for them; otherwise they are ignored.
 */
#ifndef QUILLON_QUILLON_MESSAGE_H
#define QUILLON_QUILLON_MESSAGE_H

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#ifdef __cplusplus
#define QUILLON_MESSAGE_CAST(type, value) static_cast<type>(value)
#else
#define QUILLON_MESSAGE_CAST(type, value) ((type)(value))
#endif

/* Message flags. Without QUILLON_MESSAGE_VALUES the viewer ignores the message. */
#define QUILLON_MESSAGE_VALUES 0x0001u
#define QUILLON_MESSAGE_STATUS 0x0004u
#define QUILLON_MESSAGE_TIMESTAMP 0x0008u
/* Quillon's extension: every record carries its quality, a double, straight after its payload. */
#define QUILLON_MESSAGE_QUALITY 0x0010u

/* Record types, the first byte of every record. */
#define QUILLON_MESSAGE_1D 1
#define QUILLON_MESSAGE_3D 2
#define QUILLON_MESSAGE_6D 3
#define QUILLON_MESSAGE_TIME 4

/* Results of the functions below. */
#define QUILLON_MESSAGE_OK 0
#define QUILLON_MESSAGE_NO_ROOM 1  /* the buffer is too small for what was asked */
#define QUILLON_MESSAGE_TOO_MANY 2 /* a name over 65535 bytes, or a 65536th record */
#define QUILLON_MESSAGE_UNUSABLE 3 /* a null argument, or a message that never began */

/* A message being written. Read it only through the functions below. */
typedef struct QuillonMessage {
  unsigned char* buffer;
  size_t capacity;
  size_t size;        /* bytes written so far */
  size_t countOffset; /* where the channel count lies in the buffer */
  unsigned int flags;
  unsigned int count; /* records written so far */
  int failure;        /* the first failure, QUILLON_MESSAGE_OK while there is none */
} QuillonMessage;

/* The bytes of a header with a name of nameLength bytes. */
static inline size_t quillon_message_header_size(size_t nameLength) { return 10u + nameLength; }

/* The bytes of one record of that type under those flags; 0 for an unknown type. */
static inline size_t quillon_message_record_size(unsigned int flags, int type) {
  size_t payload = 0;
  switch (type) {
    case QUILLON_MESSAGE_1D:
    case QUILLON_MESSAGE_TIME:
      payload = 8;
      break;
    case QUILLON_MESSAGE_3D:
      payload = 24;
      break;
    case QUILLON_MESSAGE_6D:
      payload = 96;
      break;
    default:
      return 0;
  }
  return 1u + ((flags & QUILLON_MESSAGE_VALUES) ? payload : 0u) + ((flags & QUILLON_MESSAGE_QUALITY) ? 8u : 0u) +
         ((flags & QUILLON_MESSAGE_STATUS) ? 4u : 0u) + ((flags & QUILLON_MESSAGE_TIMESTAMP) ? 4u : 0u);
}

static inline void quillon_message_put_u16(unsigned char* p, unsigned int v) {
  p[0] = QUILLON_MESSAGE_CAST(unsigned char, v & 0xFFu);
  p[1] = QUILLON_MESSAGE_CAST(unsigned char, (v >> 8) & 0xFFu);
}

static inline void quillon_message_put_u32(unsigned char* p, uint32_t v) {
  int i;
  for (i = 0; i < 4; ++i) p[i] = QUILLON_MESSAGE_CAST(unsigned char, (v >> (8 * i)) & 0xFFu);
}

static inline void quillon_message_put_f64(unsigned char* p, double v) {
  uint64_t bits;
  int i;
  memcpy(&bits, &v, sizeof bits);
  for (i = 0; i < 8; ++i) p[i] = QUILLON_MESSAGE_CAST(unsigned char, (bits >> (8 * i)) & 0xFFu);
}

/* Starts a message in buffer: writes its header with no records yet. name is the control path
   name (without terminator in the message); group the channel-group number; flags a combination
   of the QUILLON_MESSAGE_ flags. Returns QUILLON_MESSAGE_OK, or the failure, which the message
   then keeps. */
static inline int quillon_message_begin(QuillonMessage* m, void* buffer, size_t capacity, const char* name,
                                        int32_t group, unsigned int flags) {
  size_t nameLength;
  if (!m) return QUILLON_MESSAGE_UNUSABLE;
  m->buffer = QUILLON_MESSAGE_CAST(unsigned char*, buffer);
  m->capacity = buffer ? capacity : 0u;
  m->size = 0;
  m->countOffset = 0;
  m->flags = flags & 0xFFFFu;
  m->count = 0;
  m->failure = QUILLON_MESSAGE_OK;
  if (!buffer || !name) return m->failure = QUILLON_MESSAGE_UNUSABLE;
  nameLength = strlen(name);
  if (nameLength > 0xFFFFu) return m->failure = QUILLON_MESSAGE_TOO_MANY;
  if (quillon_message_header_size(nameLength) > capacity) return m->failure = QUILLON_MESSAGE_NO_ROOM;
  quillon_message_put_u16(m->buffer, m->flags);
  quillon_message_put_u16(m->buffer + 2, QUILLON_MESSAGE_CAST(unsigned int, nameLength));
  if (nameLength > 0) memcpy(m->buffer + 4, name, nameLength);
  quillon_message_put_u32(m->buffer + 4 + nameLength, QUILLON_MESSAGE_CAST(uint32_t, group));
  m->countOffset = 8 + nameLength;
  quillon_message_put_u16(m->buffer + m->countOffset, 0u);
  m->size = quillon_message_header_size(nameLength);
  return QUILLON_MESSAGE_OK;
}

/* Writes one record: the type byte, the payload of `values` doubles, then quality, status and
   time stamp as the flags ask. A record that does not fit is not written at all, and neither is
   any later one: the message keeps the failure. */
static inline int quillon_message_add_record(QuillonMessage* m, int type, const double* values, size_t valueCount,
                                             uint32_t status, uint32_t timestamp, double quality) {
  size_t needed;
  size_t i;
  unsigned char* p;
  if (!m || !m->buffer || m->size == 0) return QUILLON_MESSAGE_UNUSABLE;
  /* A record's place in the message is its channel number: after one is missing, none may follow. */
  if (m->failure != QUILLON_MESSAGE_OK) return m->failure;
  needed = quillon_message_record_size(m->flags, type);
  if (needed == 0) return QUILLON_MESSAGE_UNUSABLE;
  if (m->count >= 0xFFFFu) return m->failure = QUILLON_MESSAGE_TOO_MANY;
  if (needed > m->capacity - m->size) return m->failure = QUILLON_MESSAGE_NO_ROOM;
  p = m->buffer + m->size;
  *p++ = QUILLON_MESSAGE_CAST(unsigned char, type);
  if (m->flags & QUILLON_MESSAGE_VALUES) {
    for (i = 0; i < valueCount; ++i, p += 8) quillon_message_put_f64(p, values[i]);
  }
  if (m->flags & QUILLON_MESSAGE_QUALITY) {
    quillon_message_put_f64(p, quality);
    p += 8;
  }
  if (m->flags & QUILLON_MESSAGE_STATUS) {
    quillon_message_put_u32(p, status);
    p += 4;
  }
  if (m->flags & QUILLON_MESSAGE_TIMESTAMP) quillon_message_put_u32(p, timestamp);
  m->size += needed;
  m->count += 1u;
  quillon_message_put_u16(m->buffer + m->countOffset, m->count);
  return QUILLON_MESSAGE_OK;
}

/* A 1D value, e.g. a temperature. */
static inline int quillon_message_add_1d(QuillonMessage* m, double value, uint32_t status, uint32_t timestamp,
                                         double quality) {
  return quillon_message_add_record(m, QUILLON_MESSAGE_1D, &value, 1, status, timestamp, quality);
}

/* A 3D value: a position x, y, z in metres. */
static inline int quillon_message_add_3d(QuillonMessage* m, double x, double y, double z, uint32_t status,
                                         uint32_t timestamp, double quality) {
  double values[3];
  values[0] = x;
  values[1] = y;
  values[2] = z;
  return quillon_message_add_record(m, QUILLON_MESSAGE_3D, values, 3, status, timestamp, quality);
}

/* A 6D value: a position (metres) and a 3 x 3 rotation matrix given column by column
   (rotation[0..2] is the first column). */
static inline int quillon_message_add_6d(QuillonMessage* m, const double position[3], const double rotation[9],
                                         uint32_t status, uint32_t timestamp, double quality) {
  double values[12];
  if (!position || !rotation) return QUILLON_MESSAGE_UNUSABLE;
  memcpy(values, position, 3 * sizeof(double));
  memcpy(values + 3, rotation, 9 * sizeof(double));
  return quillon_message_add_record(m, QUILLON_MESSAGE_6D, values, 12, status, timestamp, quality);
}

/* The group's time value. */
static inline int quillon_message_add_time(QuillonMessage* m, double time, uint32_t status, uint32_t timestamp,
                                           double quality) {
  return quillon_message_add_record(m, QUILLON_MESSAGE_TIME, &time, 1, status, timestamp, quality);
}

/* The bytes of the message so far: what to hand to quillon_SendChannels_v1. */
static inline size_t quillon_message_size(const QuillonMessage* m) { return m ? m->size : 0u; }

/* The records written so far. */
static inline unsigned int quillon_message_count(const QuillonMessage* m) { return m ? m->count : 0u; }

/* QUILLON_MESSAGE_OK, or the first failure since quillon_message_begin. The records before it
   form a whole message, so what fitted can still be sent. */
static inline int quillon_message_failed(const QuillonMessage* m) { return m ? m->failure : QUILLON_MESSAGE_UNUSABLE; }

#endif /* QUILLON_QUILLON_MESSAGE_H */
