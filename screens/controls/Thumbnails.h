// Small pictures of the routes' previews, made in the background and kept on the disk.
#pragma once

#include <QHash>
#include <QImage>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace quillon {

/// Asked for by the painting of rows: what is asked for last is on view, and made first. Never blocks.
class Thumbnails : public QObject {
 public:
  static constexpr int kWidth = 128, kHeight = 96;  // pixels of what is kept: enough for two per point

  /// `folder` is the host path of the kept ones; made when it is missing.
  explicit Thumbnails(QString folder, QObject* parent);
  ~Thumbnails() override;

  /// Of the route `zip`; `previewPath` is asked once for the host path of its preview. Null until `OnReady`
  /// is called.
  QPixmap Of(const QString& zip, const std::function<QString()>& previewPath);
  /// Looks at all previews again; what was made is shown meanwhile.
  void LookAgain() { asked_.clear(); }

  /// Another one is there.
  std::function<void()> OnReady;

 private:
  struct Job {
    QString zip, preview;
  };
  void Work();
  QImage Make(const Job& job) const;

  const QString folder_;
  QHash<QString, QPixmap> made_;
  QHash<QString, bool> asked_;
  std::mutex mutex_;
  std::condition_variable wanted_;
  std::deque<Job> jobs_;
  bool stop_ = false;
  std::thread worker_;
};

}  // namespace quillon
