#include <cell/text/Notice.h>

namespace {

constexpr std::size_t ItemsBetween = 1000;

std::function<void(const std::string&)>& Listener() {
    static std::function<void(const std::string&)> listener;
    return listener;
}

} // namespace

void cell::SetNotice(std::function<void(const std::string&)> show) { Listener() = std::move(show); }

void cell::Notice(const std::string& text) {
    if (Listener()) {
        Listener()(text);
    }
}

void cell::NoticeItem(const std::string& list, std::size_t number, std::size_t count) {
    if (number % ItemsBetween == 0 && count > ItemsBetween) {
        Notice("reading " + list + ": " + std::to_string(number) + " of " + std::to_string(count));
    }
}
