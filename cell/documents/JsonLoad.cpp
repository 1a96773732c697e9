#include <algorithm>
#include <cell/InputError.h>
#include <cell/documents/JsonNode.h>
#include <cell/text/Notice.h>
#include <fstream>
#include <host/tools/DataHandle.h>
#include <iterator>
#include <json/reader.h>
#include <sstream>

namespace cell {

namespace {

constexpr std::size_t MegaByte = 1'000'000;
/// Reading a larger file takes more than a second, so progress is reported.
constexpr std::size_t LargeFile = 5 * MegaByte;

/// Length of a regular file; 0 for pipes and devices, which have none.
std::uintmax_t LengthOf(const std::filesystem::path& file) {
    std::error_code error;
    const bool isRegular = std::filesystem::is_regular_file(file, error);
    return isRegular ? std::filesystem::file_size(file, error) : 0;
}

std::string ReadAll(const std::filesystem::path& file) {
    std::error_code error;
    if (std::filesystem::is_directory(file, error)) {
        throw InputError(file.string(), "", "is a folder", "a JSON file");
    }
    const std::uintmax_t length = LengthOf(file);
    errno = 0;
    std::ifstream stream(file, std::ios::binary);
    std::string text;
    text.resize(length);
    stream.read(text.data(), static_cast<std::streamsize>(length));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    text.append(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    if (!stream.is_open() || stream.bad()) {
        const std::string why = errno != 0 ? " (" + std::generic_category().message(errno) + ")" : "";
        throw InputError(file.string(), "", "cannot be read" + why, "a JSON file");
    }
    if (length > 0 && (text.size() != length || LengthOf(file) != length)) {
        throw InputError(file.string(), "", "changed its length while it was read",
                         "a file that stays as it is");
    }
    return text;
}

/// Text that is not UTF-8 would make names, messages and all documents written from them invalid.
void RequireText(const std::filesystem::path& file, const std::string& text) {
    const std::string utf8 = DataHandle::StringToUTF8string(text);
    if (utf8 != text) {
        const auto wrong = std::mismatch(text.begin(), text.end(), utf8.begin()).first;
        const std::string line = "Line " + std::to_string(1 + std::count(text.begin(), wrong, '\n'));
        throw InputError(file.string(), line, "a byte that is no part of a character", "UTF-8");
    }
}

// The parser's report is "* Line 3, Column 5\n  Message\n..."; the first entry is the cause, the rest follows
// from it.
[[noreturn]] void RefuseSyntax(const std::filesystem::path& file, const std::string& report) {
    std::istringstream lines(report);
    std::string place;
    std::string message;
    std::getline(lines, place);
    std::getline(lines, message);
    const auto trim = [](std::string& text) {
        text.erase(0, std::min(text.find_first_not_of("* "), text.size()));
    };
    trim(place);
    trim(message);
    throw InputError(file.string(), place, message, "a JSON document with each key once");
}

} // namespace

JsonNode JsonNode::Load(const std::filesystem::path& file) {
    const std::string text = ReadAll(file);
    if (text.size() > LargeFile) {
        Notice("reading " + file.string() + ", " + std::to_string(text.size() / MegaByte) + " MB");
    }
    RequireText(file, text);
    auto document = std::make_shared<Document>();
    document->file = file;
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    builder["rejectDupKeys"] = true;
    std::string report;
    try {
        const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
        if (!reader->parse(text.data(), text.data() + text.size(), &document->root, &report)) {
            RefuseSyntax(file, report);
        }
    } catch (const Json::Exception& error) {
        throw InputError(file.string(), "", error.what(), "a JSON document");
    }
    const Json::Value* root = &document->root;
    return {std::move(document), root, ""};
}

} // namespace cell
