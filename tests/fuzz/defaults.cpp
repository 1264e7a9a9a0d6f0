#include "Fuzz.h"

#include "daypart/DaypartController.h"
#include "platform/UserDefaults.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTimeZone>

#include <algorithm>
#include <array>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using Fuzz::require;

namespace {

const QString manualKey = QLatin1StringView{DaypartController::manualKey};
const QString daypartKey = QLatin1StringView{DaypartController::storageKey};
const QDateTime noon{QDate{2024, 6, 1}, QTime{12, 0}, QTimeZone::utc()};

/// The defaults file of this process, in a folder of its own.
class DefaultsFile final {
public:
    DefaultsFile() {
        qputenv("XDG_CONFIG_HOME", m_folder.path().toUtf8());
        require(m_folder.isValid() && QDir{m_folder.path()}.mkdir(u"vorna"_s));
    }

    /// Each time with a time stamp of its own, since Qt does not read a file again that seems to be the same.
    void write(const QByteArray& text) {
        const int file = ::open(m_path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        require(file >= 0 && ::write(file, text.constData(), static_cast<std::size_t>(text.size())) == text.size());
        const timespec stamp{.tv_sec = ++m_seconds, .tv_nsec = 0};
        const std::array stamps{stamp, stamp};
        require(::futimens(file, stamps.data()) == 0);
        ::close(file);
    }

private:
    const QTemporaryDir m_folder;
    const QByteArray m_path = m_folder.filePath(u"vorna/companion.conf"_s).toUtf8();
    time_t m_seconds = 0;
};

struct Shown final {
    bool isManual;
    Daypart daypart;

    friend bool operator==(const Shown&, const Shown&) = default;
};

/// What a companion shows that has just started and then done this, and what it has stored fits to it.
Shown shownAfter(const std::function<void(DaypartController&)>& choose = [](DaypartController&) {}) {
    const auto defaults = UserDefaults::standard();
    DaypartController controller{*defaults, [] { return noon; }};
    choose(controller);
    const bool isManual = defaults->boolean(manualKey);
    const auto stored = isManual ? defaults->string(daypartKey) : std::nullopt;
    const auto pinned = stored ? DaypartInfo::fromRawValue(*stored) : std::nullopt;
    const Shown result{controller.isManual, controller.daypart};
    require(result == (Shown{isManual, pinned.value_or(Daypart::day)}));
    require(std::ranges::count(DaypartInfo::allCases, result.daypart) == 1);
    require(controller.palette.value() == DaypartPalette::of(result.daypart));
    return result;
}

}

/// The input is the defaults file. Only some inputs are also read again and written over, which takes much longer.
void Fuzz::defaults(const QByteArray& input) {
    static DefaultsFile file;
    file.write(input);
    const Shown atStart = shownAfter();
    const bool mayBeSpelled = input.contains('\\') || input.contains('"');
    require(!atStart.isManual || input.contains("true") || mayBeSpelled);
    Choices choices{input};
    if (choices.oneIn(16)) {
        file.write(input);
        require(shownAfter() == atStart);
    }
    if (choices.oneIn(128)) {
        const auto choice = Daypart{static_cast<int>(choices.below(DaypartInfo::allCases.size()))};
        shownAfter([choice](DaypartController& controller) { controller.set(choice); });
        require(shownAfter() == (Shown{true, choice}));
        shownAfter([](DaypartController& controller) { controller.useAuto(); });
        require(shownAfter() == (Shown{false, Daypart::day}));
    }
}
