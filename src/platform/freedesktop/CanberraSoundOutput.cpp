#include "platform/freedesktop/CanberraSoundOutput.h"

#include <alsa/asoundlib.h>
#include <atomic>
#include <canberra.h>

#include <QByteArray>
#include <QFile>

namespace zarvy {

namespace {

// ALSA writes several lines to standard error for every sound on a machine without a sound card.
void dropAlsaMessage(const char* /*file*/, int /*line*/, const char* /*function*/, int /*error*/,
                     const char* /*format*/, ...) {}

}  // namespace

// libcanberra's context, and whether a call into it is under way.
class CanberraSoundOutput::Player {
 public:
  explicit Player(const QString& file) : m_file(QFile::encodeName(file)) {
    const bool hasSound = QFile::exists(file);
    if (!hasSound || ca_context_create(&m_context) != CA_SUCCESS) m_context = nullptr;
  }
  ~Player() {
    if (m_context != nullptr) ca_context_destroy(m_context);
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  // True for the caller that may call play() next.
  [[nodiscard]] bool begin() { return m_context != nullptr && !m_isBusy.exchange(true); }

  void play() {
    snd_lib_error_set_handler(dropAlsaMessage);
    ca_context_play(m_context, 0, CA_PROP_MEDIA_FILENAME, m_file.constData(), CA_PROP_MEDIA_NAME,
                    "Tink", CA_PROP_MEDIA_ROLE, "event", nullptr);
    m_isBusy = false;
  }

 private:
  const QByteArray m_file;
  ca_context* m_context = nullptr;
  std::atomic<bool> m_isBusy = false;
};

CanberraSoundOutput::CanberraSoundOutput(WorkerPool& workers, const QString& file)
    : m_workers(workers), m_player(std::make_shared<Player>(file)) {}

void CanberraSoundOutput::playExpansionSound() {
  if (!m_player->begin()) return;
  m_workers.post([player = m_player] { player->play(); });
}

}  // namespace zarvy
