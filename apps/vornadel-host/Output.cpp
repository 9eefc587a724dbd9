#include "Output.hpp"

#include <algorithm>
#include <map>

#include "HostSession.hpp"

namespace runner {

namespace {

std::string Utf8(const std::string& gbk) {
    return host::GbkToUtf8(gbk);
}

// The code point that starts at text[i] and its length; a broken sequence counts as one byte.
unsigned int CodePoint(const std::string& text, size_t i, size_t& length) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    length = c < 0x80 ? 1 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
    if (c < 0x80 || i + length > text.size()) {
        length = 1;
        return c;
    }
    unsigned int cp = c & (0xFF >> (length + 1));
    for (size_t k = 1; k < length; ++k) cp = (cp << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
    return cp;
}

bool IsWide(unsigned int cp) {
    return (cp >= 0x1100 && cp <= 0x115F) || (cp >= 0x2E80 && cp <= 0xA4CF) || (cp >= 0xAC00 && cp <= 0xD7A3) ||
           (cp >= 0xF900 && cp <= 0xFAFF) || (cp >= 0xFE30 && cp <= 0xFE4F) || (cp >= 0xFF00 && cp <= 0xFF60) ||
           (cp >= 0xFFE0 && cp <= 0xFFE6) || (cp >= 0x20000 && cp <= 0x3FFFD);
}

std::string Joined(const std::vector<std::string>& gbkItems, const char* separator) {
    std::string joined;
    for (size_t i = 0; i < gbkItems.size(); ++i) {
        if (i > 0) joined += separator;
        joined += Utf8(gbkItems[i]);
    }
    return joined;
}

// Splits text at its line ends.
std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (;;) {
        const size_t end = text.find('\n', start);
        lines.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos) return lines;
        start = end + 1;
    }
}

}  // namespace

std::string TsvField(const std::string& utf8) {
    std::string field;
    for (char c : utf8) {
        if (c == '\t') {
            field += "\\t";
        } else if (c == '\n') {
            field += "\\n";
        } else {
            field += c;
        }
    }
    return field;
}

std::string Pad(const std::string& utf8, int width, int ambiguousWidth) {
    return utf8 + std::string(static_cast<size_t>(std::max(0, width - DisplayWidth(utf8, ambiguousWidth))), ' ');
}

int DisplayWidth(const std::string& utf8, int ambiguousWidth) {
    int width = 0;
    for (size_t i = 0; i < utf8.size();) {
        size_t length = 1;
        const unsigned int cp = CodePoint(utf8, i, length);
        if (cp < 0x80) {
            width += 1;
        } else if (IsWide(cp)) {
            width += 2;
        } else {
            // Ambiguous when GBK holds it in two bytes ("?" when GBK has none; one byte for the euro).
            const std::string gbk = host::Utf8ToGbk(utf8.substr(i, length));
            width += gbk.size() == 2 ? ambiguousWidth : 1;
        }
        i += length;
    }
    return width;
}

Utf8Filter::int_type Utf8Filter::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    pending_ += traits_type::to_char_type(c);
    if (pending_.back() == '\n') sync();
    return c;
}

std::streamsize Utf8Filter::xsputn(const char* text, std::streamsize count) {
    pending_.append(text, static_cast<size_t>(count));
    if (pending_.find('\n', pending_.size() - static_cast<size_t>(count)) != std::string::npos) sync();
    return count;
}

int Utf8Filter::sync() {
    static const char kHex[] = "0123456789ABCDEF";
    std::string safe;
    for (size_t at = 0; at < pending_.size();) {
        const size_t bad = host::FirstInvalidUtf8(pending_.substr(at));
        if (bad == std::string::npos) {
            safe.append(pending_, at, std::string::npos);
            break;
        }
        safe.append(pending_, at, bad);
        const unsigned char byte = static_cast<unsigned char>(pending_[at + bad]);
        safe += std::string("\\x") + kHex[byte >> 4] + kHex[byte & 0xF];
        at += bad + 1;
    }
    pending_.clear();
    if (!safe.empty() && beforeWriting_) beforeWriting_();
    target_ << safe;
    target_.flush();
    return target_ ? 0 : -1;
}

const char* MessageTypeName(NXOpen::NXMessageBox::DialogType type) {
    switch (type) {
    case NXOpen::NXMessageBox::DialogTypeError: return "error";
    case NXOpen::NXMessageBox::DialogTypeWarning: return "warning";
    case NXOpen::NXMessageBox::DialogTypeInformation: return "information";
    case NXOpen::NXMessageBox::DialogTypeQuestion: return "question";
    }
    return "unknown";
}

void Printer::Blocks(const std::string& title, const std::vector<host::BlockView>& blocks) {
    if (format_ == Format::Tsv) {
        for (const host::BlockView& b : blocks) {
            out_ << TsvField(b.id) << '\t' << TsvField(b.blockClass) << '\t' << TsvField(Utf8(b.label)) << '\t'
                 << TsvField(Utf8(b.value)) << '\t' << TsvField(Joined(b.choices, "|")) << '\n';
        }
        out_.flush();
        return;
    }
    out_ << "Dialog: " << Utf8(title) << '\n';
    std::map<std::string, int> depth;
    for (const host::BlockView& b : blocks) {
        const int d = b.parentId.empty() ? 1 : depth[b.parentId] + 1;
        depth[b.id] = d;
        out_ << std::string(static_cast<size_t>(2 * d), ' ') << '[' << b.blockClass << ' ' << b.id << ']';
        if (!b.label.empty()) out_ << ' ' << Utf8(b.label);
        if (!b.value.empty()) out_ << " = " << Utf8(b.value);
        if (!b.choices.empty()) out_ << "  (choices: " << Joined(b.choices, " | ") << ')';
        out_ << '\n';
    }
    out_.flush();
}

void Printer::Tree(const TreeView& tree) {
    if (format_ == Format::Tsv) {
        for (const TreeRow& row : tree.rows) {
            out_ << row.depth;
            for (int column = 0; column < kTsvTreeColumns; ++column) {
                const auto text = row.texts.find(column);
                out_ << '\t' << (text == row.texts.end() ? "" : TsvField(Utf8(text->second)));
            }
            out_ << '\t' << (row.colour ? std::to_string(*row.colour) : "-");
            out_ << '\t' << (row.bodyTag ? std::to_string(*row.bodyTag) : "-") << '\n';
        }
        out_.flush();
        return;
    }
    // An indented table: the visible columns, then the row's colour (颜色) and body (实体).
    std::vector<std::vector<std::string>> table(1);
    for (const host::ColumnView& c : tree.columns) {
        if (c.visible) table[0].push_back(Utf8(c.title));
    }
    table[0].push_back(u8"颜色");
    table[0].push_back(u8"实体");
    for (const TreeRow& row : tree.rows) {
        std::vector<std::string> cells;
        for (const host::ColumnView& c : tree.columns) {
            if (!c.visible) continue;
            const auto text = row.texts.find(c.id);
            std::string cell = text == row.texts.end() ? "" : Utf8(text->second);
            if (cells.empty()) cell = std::string(static_cast<size_t>(2 * row.depth), ' ') + cell;
            cells.push_back(cell);
        }
        cells.push_back(row.colour ? std::to_string(*row.colour) : "-");
        cells.push_back(row.bodyTag ? std::to_string(*row.bodyTag) : "-");
        table.push_back(cells);
    }
    std::vector<int> widths(table[0].size(), 0);
    for (const auto& cells : table) {
        for (size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], DisplayWidth(cells[i], ambiguousWidth_));
    }
    for (size_t r = 0; r < table.size(); ++r) {
        std::string line;
        for (size_t i = 0; i < table[r].size(); ++i) {
            line += i + 1 < table[r].size() ? Pad(table[r][i], widths[i], ambiguousWidth_) + "  " : table[r][i];
        }
        out_ << line << '\n';
        if (r == 0) out_ << std::string(static_cast<size_t>(DisplayWidth(line, ambiguousWidth_)), '-') << '\n';
    }
    if (tree.rows.empty()) out_ << "(no rows)\n";
    out_.flush();
}

void Printer::Message(const host::MessageRecord& m) {
    if (format_ == Format::Tsv) {
        out_ << "message\t" << TsvField(Utf8(m.title)) << '\t' << MessageTypeName(m.type) << '\t'
             << TsvField(Utf8(m.text)) << '\n';
    } else {
        out_ << "+-- " << MessageTypeName(m.type) << ": " << Utf8(m.title) << '\n';
        for (const std::string& line : Lines(Utf8(m.text))) out_ << "| " << line << '\n';
        out_ << "+--\n";
    }
    out_.flush();
}

void Printer::Messages(const std::vector<host::MessageRecord>& messages) {
    for (const host::MessageRecord& m : messages) Message(m);
    if (messages.empty() && format_ == Format::Text) out_ << "(no messages)\n";
    out_.flush();
}

void Printer::Part(const PartView& part) {
    if (format_ == Format::Tsv) {
        auto attributes = [this](const std::string& owner, const std::vector<AttributeView>& list) {
            for (const AttributeView& a : list) {
                out_ << "attribute\t" << owner << '\t' << TsvField(Utf8(a.title)) << '\t' << a.type << '\t'
                     << TsvField(Utf8(a.value)) << '\n';
            }
        };
        out_ << "part\t" << TsvField(Utf8(part.leaf)) << '\n';
        attributes("part", part.attributes);
        for (const LayerView& l : part.layers) out_ << "layer\t" << l.layer << '\t' << l.state << '\n';
        for (const BodyView& b : part.bodies) {
            out_ << "body\t" << b.tag << '\t' << b.layer << '\t' << b.colour << '\t'
                 << (b.blanked ? "blanked" : "shown") << '\t' << (b.highlighted ? "highlighted" : "plain") << '\n';
            attributes(std::to_string(b.tag), b.attributes);
        }
        out_.flush();
        return;
    }
    auto attributes = [this](const char* indent, const std::vector<AttributeView>& list) {
        for (const AttributeView& a : list) {
            out_ << indent << Utf8(a.title) << " = " << Utf8(a.value);
            if (a.type != "string") out_ << " (" << a.type << ')';
            out_ << '\n';
        }
    };
    out_ << "Part " << Utf8(part.leaf) << '\n';
    attributes("  ", part.attributes);
    for (const LayerView& l : part.layers) out_ << "  layer " << l.layer << ": " << l.state << '\n';
    for (const BodyView& b : part.bodies) {
        out_ << "  body " << b.tag << ": layer " << b.layer << ", colour " << b.colour << ", "
             << (b.blanked ? "blanked" : "shown") << (b.highlighted ? ", highlighted" : "") << '\n';
        attributes("    ", b.attributes);
    }
    out_.flush();
}

void Printer::TreeState(const TreeStateView& state) {
    if (format_ == Format::Tsv) {
        for (const RowAddress& row : state.selected) out_ << "selected\t" << RowText(row) << '\n';
        for (const RowAddress& row : state.expanded) out_ << "expanded\t" << RowText(row) << '\n';
        out_.flush();
        return;
    }
    auto list = [this](const char* what, const std::vector<RowAddress>& rows) {
        out_ << what << ':';
        for (const RowAddress& row : rows) out_ << ' ' << RowText(row);
        out_ << (rows.empty() ? " (none)\n" : "\n");
    };
    list("Selected rows", state.selected);
    list("Expanded rows", state.expanded);
    out_.flush();
}

void Printer::Selection(const host::SelectionRequest& r) {
    if (format_ == Format::Tsv) {
        out_ << "selection\t" << TsvField(Utf8(r.title)) << '\t' << TsvField(Utf8(r.message)) << '\n';
    } else {
        out_ << "Selection dialog: " << Utf8(r.title) << ": " << Utf8(r.message);
        if (r.unanswered) out_ << " (no answer-selection was queued: cancelled)";
        out_ << '\n';
    }
    out_.flush();
}

void Printer::Opened(const std::string& path, bool reallyOpened) {
    if (format_ == Format::Tsv) {
        out_ << "open\t" << TsvField(Utf8(path)) << '\n';
    } else if (reallyOpened) {
        out_ << "Opened with its program: " << Utf8(path) << '\n';
    } else {
        out_ << "Would open with its program (--open opens it): " << Utf8(path) << '\n';
    }
    out_.flush();
}

void Printer::EditRefused(const RowAddress& row, int column, const std::string& utf8Text) {
    if (format_ == Format::Tsv) {
        out_ << "edit-refused\t" << RowText(row) << '\t' << column << '\t' << TsvField(utf8Text) << '\n';
    } else {
        out_ << "The cell of row " << RowText(row) << ", column " << column << " did not take the text.\n";
    }
    out_.flush();
}

void Printer::NxCalls(const std::map<std::string, long>& counts) {
    long total = 0;
    for (const auto& entry : counts) total += entry.second;
    if (format_ == Format::Tsv) {
        for (const auto& [name, count] : counts) out_ << "nx-call\t" << name << '\t' << count << '\n';
    } else {
        out_ << "NX calls of the plug-in (" << total << " in all):\n";
        for (const auto& [name, count] : counts) {
            const std::string number = std::to_string(count);
            out_ << std::string(number.size() < 10 ? 10 - number.size() : 0, ' ') << number << "  " << name << '\n';
        }
    }
    out_.flush();
}

void Printer::Menu(const std::string& where, const std::string& row,
                   const std::vector<host::LiveDialog::MenuItemView>& items) {
    auto state = [](const host::LiveDialog::MenuItemView& item) {
        return item.hidden ? "hidden" : item.disabled ? "disabled" : "enabled";
    };
    if (format_ == Format::Tsv) {
        for (const auto& item : items)
            out_ << "menu-item\t" << row << '\t' << item.id << '\t' << TsvField(Utf8(item.text)) << '\t' << state(item) << '\n';
    } else if (items.empty()) {
        out_ << "The plug-in shows no menu on " << where << ".\n";
    } else {
        out_ << "Menu on " << where << ":\n";
        for (const auto& item : items)
            out_ << "  " << Pad(std::to_string(item.id), 4) << Utf8(item.text)
                 << (item.hidden || item.disabled ? std::string("  (") + state(item) + ")" : std::string()) << '\n';
    }
    out_.flush();
}

void Printer::MenuRefused(const RowAddress& row, int itemId, const std::string& why) {
    if (format_ == Format::Tsv) {
        out_ << "menu-refused\t" << RowText(row) << '\t' << itemId << '\t' << why << '\n';
    } else {
        out_ << "Menu item " << itemId << " on row " << RowText(row) << " is " << why << ": nothing runs.\n";
    }
    out_.flush();
}

}  // namespace runner
