#include "screens/controls/Thumbnails.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <system_error>
#include <utility>

namespace quillon {
namespace {

constexpr std::size_t kMostWaiting = 64;  // rows that were passed quickly need none
constexpr qsizetype kMostKept = 1000;     // pictures in memory
constexpr int kQuality = 85;

/// Fills the frame; what stands over is cut off evenly.
QImage Framed(QImage picture) {
  const QSize frame(Thumbnails::kWidth, Thumbnails::kHeight);
  picture = picture.scaled(frame, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
  const QPoint corner((picture.width() - frame.width()) / 2, (picture.height() - frame.height()) / 2);
  return picture.copy(QRect(corner, frame));
}

}  // namespace

Thumbnails::Thumbnails(QString folder, QObject* parent) : QObject(parent), folder_(std::move(folder)) {
  try {
    worker_ = std::thread([this] { Work(); });
  } catch (const std::system_error&) {  // rows without pictures
  }
}

Thumbnails::~Thumbnails() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  wanted_.notify_one();
  if (worker_.joinable()) worker_.join();
}

QPixmap Thumbnails::Of(const QString& zip, const std::function<QString()>& previewPath) {
  if (!asked_.contains(zip)) {
    asked_.insert(zip, true);
    Job job{zip, previewPath()};
    const std::lock_guard lock(mutex_);
    jobs_.push_back(std::move(job));
    if (jobs_.size() > kMostWaiting) {
      asked_.remove(jobs_.front().zip);
      jobs_.pop_front();
    }
    wanted_.notify_one();
  }
  return made_.value(zip);
}

void Thumbnails::Work() {
  std::unique_lock lock(mutex_);
  for (;;) {
    wanted_.wait(lock, [this] { return stop_ || !jobs_.empty(); });
    if (stop_) return;
    const Job job = std::move(jobs_.back());
    jobs_.pop_back();
    lock.unlock();
    const QImage picture = Make(job);
    QMetaObject::invokeMethod(this, [this, zip = job.zip, picture] {
      if (picture.isNull()) return;
      if (made_.size() >= kMostKept) {
        made_.clear();  // what is on view is asked for again, and lies on the disk
        asked_.clear();
      }
      made_.insert(zip, QPixmap::fromImage(picture));
      if (OnReady) OnReady();
    });
    lock.lock();
  }
}

/// The kept one has the time of the preview that it was made of.
QImage Thumbnails::Make(const Job& job) const {
  const QDateTime time = QFileInfo(job.preview).lastModified();
  const QString path = folder_ + "/" + job.zip + ".jpg";
  if (const QFileInfo kept(path); kept.exists() && kept.lastModified() == time)
    if (QImage picture(path); !picture.isNull()) return picture;
  QImageReader reader(job.preview);
  reader.setDecideFormatFromContent(true);
  const QImage whole = reader.read();
  if (whole.isNull()) return whole;
  QImage picture = Framed(whole);
  const QString part = path + ".part~";
  QDir().mkpath(folder_);
  if (picture.save(part, "JPEG", kQuality)) {
    QFile file(part);
    const bool dated =
        file.open(QIODevice::ReadWrite) && file.setFileTime(time, QFileDevice::FileModificationTime);
    file.close();
    QFile::remove(path);
    if (!dated || !QFile::rename(part, path)) QFile::remove(part);
  }
  return picture;
}

}  // namespace quillon
