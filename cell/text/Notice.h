#pragma once

#include <functional>
#include <string>

namespace cell {

/// Where long work says what it is doing; nowhere until somebody listens. An empty text takes the last one
/// away.
void SetNotice(std::function<void(const std::string& text)> show);
void Notice(const std::string& text);

/// Says so now and then while a long list is read: "reading key_states: 3000 of 100000".
void NoticeItem(const std::string& list, std::size_t number, std::size_t count);

} // namespace cell
