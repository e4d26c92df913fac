// Mosa_IconControl: stores or forgets the custom dialog icon, taken from a container's data
// streams (PICT kept as given, PNG and JPEG converted by the picture service, GIF refused).
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <span>
#include <vector>

#include "frame/handler_frame.h"
#include "frame/handlers.h"
#include "icons/icons.h"
#include "toolkit/picture.h"
#include "toolkit/platform.h"
#include "util/cstring.h"
#include "util/errors.h"
#include "util/hosttext.h"

namespace {

fmx::int32 StreamIndex(const fmx::BinaryData& data, char a, char b, char c, char d) {
  fmx::QuadCharUniquePtr type(a, b, c, d);
  return data.GetIndex(*type);
}

// Copies one stream. The size is checked against the picture bounds before memory is taken.
fmx::errcode Zk7_CopyStream(const fmx::BinaryData& data, fmx::int32 index,
                            std::vector<unsigned char>& out) {
  const fmx::uint32 size = data.GetSize(index);
  if (size > toolkit::picture::kMaxBytes) return kErrMemory;
  try {
    out.assign(size, 0);
  } catch (const std::bad_alloc&) {
    return kErrMemory;
  }
  if (size == 0) return 0;
  return data.GetData(index, 0, size, out.data());
}

}  // namespace

std::int16_t Zk7DeleteAllCustomIconData() {
  // Both kinds of stored picture are one object here; the flag only records where it came from.
  delete gCustomIconPict;
  gCustomIconPict = nullptr;
  return 0;
}

const toolkit::Image* Zk7CustomIconImage() {
  if (!gCustomIconPict || gCustomIconPict->image.empty()) return nullptr;
  return &gCustomIconPict->image;
}

namespace {

using Decoder = toolkit::picture::Status (*)(std::span<const std::uint8_t>, toolkit::Image&);

// Converts one compressed picture stream through the picture service.
std::int16_t Zk7_ConvertStream(const fmx::BinaryData& data, fmx::int32 index, Decoder decode,
                               Zk7Picture** picture) {
  *picture = nullptr;
  if (!toolkit::platform::jpegDecoderPresent()) return kErrNoPictureService;
  if (data.GetSize(index) == 0) return 0;
  std::vector<unsigned char> bytes;
  if (fmx::errcode err = Zk7_CopyStream(data, index, bytes); err != 0) return err;
  auto converted = std::make_unique<Zk7Picture>();
  switch (decode(bytes, converted->image)) {
    case toolkit::picture::Status::Ok:
      break;
    case toolkit::picture::Status::NoDecoder:
      return kErrNoPictureService;
    default:
      return kErrMemory;  // the converter delivered no picture
  }
  *picture = converted.release();
  return 0;
}

}  // namespace

std::int16_t Zk7_GetPictFromJPEG(const fmx::BinaryData& data, fmx::int32 index,
                                 Zk7Picture** picture) {
  return Zk7_ConvertStream(data, index, toolkit::picture::decodeJpeg, picture);
}

std::int16_t Zk7_GetPictFromPNG(const fmx::BinaryData& data, fmx::int32 index,
                                Zk7Picture** picture) {
  return Zk7_ConvertStream(data, index, toolkit::picture::decodePng, picture);
}

std::int16_t Zk7GetIconFromContainer(bool set, const fmx::DataVect& args) {
  Zk7DeleteAllCustomIconData();
  if (!set) return 0;

  const fmx::Data& value = args.At(1);
  const fmx::int32 type = value.GetNativeType();
  if (type == fmx::Data::kDTText) return value.GetAsText().GetSize() == 0 ? 0 : kErrParam;
  if (type != fmx::Data::kDTBinary) return kErrParam;
  const fmx::BinaryData& data = value.GetBinaryData();
  if (data.GetCount() <= 0) return kErrParam;

  fmx::errcode err = 0;
  bool tookPict = false;
  if (fmx::int32 pict = StreamIndex(data, 'P', 'I', 'C', 'T'); pict >= 0) {
    auto stored = std::make_unique<Zk7Picture>();
    err = Zk7_CopyStream(data, pict, stored->pictBytes);
    gIsRealPicture = 0;
    tookPict = true;
    if (err == 0) {
      // Kept as given even when it cannot be drawn: such a picture shows no icon.
      stored->image = toolkit::picture::decodePict(stored->pictBytes);
      gCustomIconPict = stored.release();
    }
  }
  if (fmx::int32 size = StreamIndex(data, 'S', 'I', 'Z', 'E');
      size >= 0 && data.GetSize(size) == 4 && err == 0) {
    unsigned char dimensions[4];
    err = data.GetData(size, 0, 4, dimensions);
  }
  if (tookPict) return err;
  if (StreamIndex(data, 'G', 'I', 'F', 'f') >= 0) {
    gIsRealPicture = 1;
    return kErrRefused;
  }
  // The host application stores inserted pictures as PNG nowadays.
  if (fmx::int32 png = StreamIndex(data, 'P', 'N', 'G', 'f'); png >= 0) {
    err = Zk7_GetPictFromPNG(data, png, &gCustomIconPict);
    gIsRealPicture = 1;
    return err;
  }
  if (fmx::int32 jpeg = StreamIndex(data, 'J', 'P', 'E', 'G'); jpeg >= 0) {
    err = Zk7_GetPictFromJPEG(data, jpeg, &gCustomIconPict);
    gIsRealPicture = 1;
    return err;
  }
  return 0;
}

MOSA_HANDLER(ZkMosa7_DoIconControl) {
  (void)funcId, (void)env;
  return Zk7HandlerFrame(
      args, result, 2,
      [](Zk7Call& call, fmx::int32& err) {
        if (err != kErrNone) return;
        if (XP_HasSwitch(call.switches, "-SetCustomIcon"))
          err = Zk7GetIconFromContainer(true, call.args);
        else if (XP_HasSwitch(call.switches, "-ForgetCustomIcon"))
          err = Zk7GetIconFromContainer(false, call.args);
        else
          err = kErrParam;
      },
      fmx::Text::kEncoding_ASCII_Mac);
}
