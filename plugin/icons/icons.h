// The icon a dialog shows, and the custom picture a script stores from container data.
#pragma once

#include <cstdint>
#include <vector>

#include "fmx/FMWrapper.h"
#include "toolkit/dialog.h"
#include "toolkit/image.h"

// Icon selector values of the switch record.
constexpr std::int32_t kIconNone = 32042;
constexpr std::int32_t kIconCustom = 32001;
constexpr std::int32_t kIconNote = 0x6E6F7465;     // 'note'
constexpr std::int32_t kIconCaution = 0x63617574;  // 'caut'
constexpr std::int32_t kIconStop = 0x73746F70;     // 'stop'
// Classic alert icon numbers, used when icon services are not available.
constexpr std::int32_t kClassicIconStop = 0;
constexpr std::int32_t kClassicIconNote = 1;
constexpr std::int32_t kClassicIconCaution = 2;

// The stored custom picture: the container's PICT bytes as given, or a picture converted from PNG
// or JPEG.
struct Zk7Picture {
  std::vector<unsigned char> pictBytes;  // copied PICT data (not a "real" picture)
  toolkit::Image image;                  // what is drawn; empty when the data cannot be decoded
};

extern Zk7Picture* gCustomIconPict;
extern unsigned char gIsRealPicture;
extern unsigned char gIconServicesAvailable;

// The picture to draw for a "-CustomIcon" dialog, or nullptr when none is stored or decodable.
const toolkit::Image* Zk7CustomIconImage();
// Disposes of the custom picture; returns 0.
std::int16_t Zk7DeleteAllCustomIconData();
// Disposes of the custom picture, then (when `set`) stores a new one from argument 2: a PICT
// stream as given, else a PNG or else a JPEG stream converted; GIF is refused. Returns an error
// number.
std::int16_t Zk7GetIconFromContainer(bool set, const fmx::DataVect& args);
// Converts the JPEG stream at `index`; on success `*picture` is a new picture (or stays null when
// the stream is empty).
std::int16_t Zk7_GetPictFromJPEG(const fmx::BinaryData& data, fmx::int32 index,
                                 Zk7Picture** picture);
// The same for a PNG stream.
std::int16_t Zk7_GetPictFromPNG(const fmx::BinaryData& data, fmx::int32 index,
                                Zk7Picture** picture);
// Draws the icon that `selector` (the switch record's icon value) names into icon item `item`:
// 32042 nothing, 32001 the custom picture when one is stored and drawable, else the note, caution
// or stop icon (by type with icon services, by classic number without). Anything else: nothing.
void Zk7_Mac_IconUserItem(toolkit::DialogWindow& dialog, int item, std::int32_t selector);
