#include "maintenance/PhotoFiles.h"

#include "platform/runtime/Dialogs.h"
#include "platform/runtime/Error.h"

namespace maintenance {

using namespace Qt::StringLiterals;

namespace {

PhotoBytes askForSmaller(const QString& path)
{
    const QStringList buttons{u"改存较小的图片"_s, u"原样存入"_s};
    constexpr int smaller = 0;
    constexpr int own = 1;
    const int pressed =
        runtime::choose({u"照片“%1”很大（超过 5 MB 或 2000 像素），成绩库会因此变大。\n"
                         "可以改存一张高 600 像素的较小的图片，文件本身不变。"_s.arg(path),
                         buttons, own, u"提示"_s});
    return pressed == smaller ? PhotoBytes::Smaller : PhotoBytes::Own;
}

} // namespace

std::optional<PhotoBytes> chosenBytes(const PhotoFiles& photos, const QString& path)
{
    try {
        return photos.check(path) == PhotoSize::Large ? askForSmaller(path) : PhotoBytes::Own;
    } catch (const runtime::Error& refusal) {
        runtime::warn(refusal.description());
        return {};
    }
}

bool setPhoto(library::ScoreLibrary& scores, database::Recordset& student, const QString& path,
              const PhotoFiles& photos, PhotoBytes bytes)
{
    database::Field photo = student.Fields(u"照片"_s);
    database::Field name = student.Fields(u"照片名"_s);
    const QByteArray smaller = bytes == PhotoBytes::Smaller ? photos.smaller(path) : QByteArray();
    // A name that is refused must leave the photo that it does not belong to.
    name.setValue(library::ScoreLibrary::GetName(path));
    if (bytes == PhotoBytes::Smaller) {
        photo.AppendChunk(smaller);
        return true;
    }
    if (scores.SaveBin(path, photo))
        return true;
    photo.takeBack();
    name.takeBack();
    return false;
}

} // namespace maintenance
