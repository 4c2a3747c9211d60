#include "preview/stream_decoder.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "preview/byte_reader.h"
#include "preview/graphic_decoder.h"
#include "preview/graphic_store.h"
#include "preview/label_canvas.h"
#include "preview/setup_commands.h"

namespace kelp_preview {
namespace {

/// Parameters and lines are cut here: nothing that is understood is longer.
constexpr std::size_t kLongestText = 256;

std::vector<std::string> splitAtCommas(const std::string& text) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == ',') {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

}  // namespace

class StreamDecoder::State {
  public:
    State(std::streambuf& stream, const DecoderLimits& limits)
        : reader_(stream), mostDots_(std::min(limits.maxDots, kMostDots)), canvas_(mostDots_) {}

    std::optional<Label> next() {
        while (!complete_ && reader_.peek() != ByteReader::kEnd) {
            if (reader_.atCommandOrEnd()) {
                readCommand();
            } else {
                readLine();
            }
        }
        if (!complete_) {
            finish();
        }
        return std::exchange(complete_, std::nullopt);
    }
    const Findings& rest() const { return label_.findings; }

  private:
    Remarks& warnings() { return label_.findings.warnings; }

    void readCommand() {
        const std::uint64_t offset = reader_.offset();
        std::string command(1, static_cast<char>(reader_.next()));
        while (command.size() < 3 && !reader_.atCommandOrEnd() && !isLineEnd(reader_.peek())) {
            const int c = reader_.next();
            command += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
        }
        textBelongsToCommand_ = false;
        if (command == "~DG") {
            downloadGraphic(offset);
            return;
        }
        const std::string parameters = readText();
        if (!applyLayoutCommand(command, parameters, offset) &&
            !applySetupCommand(command, parameters, offset, setup_, warnings())) {
            label_.findings.unknownCommands.add(offset, command);
            textBelongsToCommand_ = true;
        }
    }

    /// What stands up to the end of the line or the next command.
    std::string readText() {
        std::string text;
        while (!reader_.atCommandOrEnd() && !isLineEnd(reader_.peek())) {
            const int c = reader_.next();
            if (text.size() < kLongestText) {
                text += static_cast<char>(c);
            }
        }
        return text;
    }

    /// A line outside of commands: the size line, or nothing that a printer knows.
    void readLine() {
        if (isLineEnd(reader_.peek())) {
            reader_.next();
            return;
        }
        const std::uint64_t offset = reader_.offset();
        const std::string line = readText();
        if (line.starts_with("SIZE ")) {
            setup_.sizeLine = printable(line.substr(5));
        } else if (!textBelongsToCommand_ && line.find_first_not_of(' ') != std::string::npos) {
            warnings().add(offset, "no command, skipped: " + line.substr(0, 40));
        }
    }

    bool applyLayoutCommand(const std::string& command, const std::string& parameters,
                            std::uint64_t offset) {
        if (command == "^XX" || command == "^XA") {
            beginBlock(offset);
        } else if (command == "^XZ") {
            endBlock(offset);
        } else if (command == "^PQ") {
            if (const auto copies = leadingNumber(parameters)) {
                label_.copies = *copies;
            } else {
                warnings().add(offset, "^PQ without a number, skipped");
            }
        } else if (command == "^FO") {
            const std::vector<std::string> parts = splitAtCommas(parameters);
            field_.x = leadingNumber(parts[0]).value_or(0);
            field_.y = parts.size() > 1 ? leadingNumber(parts[1]).value_or(0) : 0;
        } else if (command == "^XG") {
            recallGraphic(parameters, offset);
        } else if (command == "^FS") {
            field_ = {};
        } else {
            return false;
        }
        return true;
    }

    void beginBlock(std::uint64_t offset) {
        if (inBlock_) {
            warnings().add(offset, "a block begins within a block");
            handOn();
        }
        inBlock_ = true;
        field_ = {};
        label_.offset = offset;
        label_.copies = 1;
    }

    void endBlock(std::uint64_t offset) {
        if (!inBlock_) {
            warnings().add(offset, "^XZ without a block");
        }
        inBlock_ = false;
        handOn();
    }

    /// Ends the label, if there is one.
    void handOn() {
        if (!canvas_.empty()) {
            label_.setup = setup_;
            label_.dots = canvas_.take();
            complete_ = std::exchange(label_, {});
        }
    }

    void downloadGraphic(std::uint64_t offset) {
        std::string header;
        int commas = 0;
        while (commas < 3 && !reader_.atCommandOrEnd() && header.size() < kLongestText) {
            const int c = reader_.next();
            if (!isLineEnd(c)) {
                header += static_cast<char>(c);
                commas += c == ',' ? 1 : 0;
            }
        }
        if (commas < 3) {
            warnings().add(offset, "~DG without name, size and bytes per row, skipped");
            return;
        }
        const std::vector<std::string> parts = splitAtCommas(header);
        const std::uint64_t total = leadingNumber(parts[1]).value_or(0);
        const std::uint64_t rowBytes = leadingNumber(parts[2]).value_or(0);
        const std::string name = GraphicStore::fullName(parts[0]);
        store_.remove(name);
        notRecalled_ = notRecalled_ == name ? std::string() : notRecalled_;
        checkSize(offset, total, rowBytes);
        if (total % rowBytes != 0) {
            warnings().add(offset, "a graphic of " + std::to_string(total) +
                                       " bytes is no whole rows of " + std::to_string(rowBytes));
        }
        const std::uint64_t dataOffset = reader_.offset();
        StoredGraphic graphic;
        graphic.dots = std::make_shared<const Bitmap>(decodeGraphic(
            reader_, static_cast<std::size_t>(rowBytes), total / rowBytes, warnings()));
        graphic.streamBytes = reader_.offset() - dataOffset;
        if (graphic.dots->height == 0) {
            warnings().add(offset, "a graphic without a whole row, skipped");
            return;
        }
        store_.add(name, std::move(graphic));
        notRecalled_ = name;
        notRecalledAt_ = offset;
    }

    void checkSize(std::uint64_t offset, std::uint64_t total, std::uint64_t rowBytes) const {
        const std::string size = "a graphic of " + std::to_string(total) + " bytes, " +
                                 std::to_string(rowBytes) + " a row, ";
        if (rowBytes == 0 || total < rowBytes) {
            throw StreamRefused(offset, size + "has no rows");
        }
        if (total > mostDots_ / 8) {
            throw StreamRefused(
                offset, size + "is over the limit of " + std::to_string(mostDots_) + " dots");
        }
        if (store_.dots() + total * 8 > mostDots_) {
            throw StreamRefused(offset, size +
                                            "and those before it are together over the limit of " +
                                            std::to_string(mostDots_) + " dots");
        }
    }

    void recallGraphic(const std::string& parameters, std::uint64_t offset) {
        const std::vector<std::string> parts = splitAtCommas(parameters);
        StoredGraphic* graphic = store_.find(parts[0]);
        if (graphic == nullptr) {
            warnings().add(offset, "no graphic to recall: " + parts[0]);
            return;
        }
        Placing placing = field_;
        placing.magnifyX = magnification(parts, 1, offset);
        placing.magnifyY = magnification(parts, 2, offset);
        lay(*graphic, placing, offset);
        if (notRecalled_ == GraphicStore::fullName(parts[0])) {
            notRecalled_.clear();
        }
    }

    std::uint64_t magnification(const std::vector<std::string>& parts, std::size_t index,
                                std::uint64_t offset) {
        const std::uint64_t asked =
            index < parts.size() ? leadingNumber(parts[index]).value_or(1) : 1;
        const std::uint64_t taken = std::clamp<std::uint64_t>(asked, 1, 10);
        if (taken != asked) {
            warnings().add(offset, "^XG magnifies 1 to 10 times");
        }
        return taken;
    }

    void lay(const StoredGraphic& graphic, const Placing& placing, std::uint64_t offset) {
        if (!canvas_.place(graphic.dots, placing)) {
            throw StreamRefused(
                offset, "the label is over the limit of " + std::to_string(mostDots_) + " dots");
        }
        label_.graphicBytes += graphic.streamBytes;
        label_.dotBytes += graphic.dots->bytes.size();
    }

    void finish() {
        if (!notRecalled_.empty()) {
            // Its label was cut off, or is for a stream to come.
            warnings().add(notRecalledAt_, "the stream ends before the graphic is recalled");
            lay(*store_.find(std::exchange(notRecalled_, {})), {}, notRecalledAt_);
        } else if (inBlock_) {
            warnings().add(reader_.offset(), "the stream ends within a block");
        }
        inBlock_ = false;
        handOn();
    }

    ByteReader reader_;
    std::uint64_t mostDots_;
    GraphicStore store_;
    LabelCanvas canvas_;
    Setup setup_;
    Label label_;                    ///< the one in the making
    std::optional<Label> complete_;  ///< the one to hand out
    Placing field_;
    bool inBlock_ = false;
    bool textBelongsToCommand_ = false;
    std::string notRecalled_;  ///< the graphic downloaded last, until it is recalled
    std::uint64_t notRecalledAt_ = 0;
};

StreamDecoder::StreamDecoder(std::streambuf& stream, const DecoderLimits& limits)
    : state_(std::make_unique<State>(stream, limits)) {}

StreamDecoder::~StreamDecoder() = default;

std::optional<Label> StreamDecoder::next() {
    return state_->next();
}

const Findings& StreamDecoder::rest() const {
    return state_->rest();
}

}  // namespace kelp_preview
