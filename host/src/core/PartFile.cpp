// Part files (*.part.json, docs/part-file.md): loading one as the work part and saving the work
// part back. The file is UTF-8 JSON; the model holds GBK. Every error names the file and the
// place (a JSON path, or line and column for a syntax error); a failed load leaves the session
// as it was, and a save goes through a temporary file so that a failed save leaves the old file.
#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <sstream>
#include <string_view>

#ifdef _WIN32
#include <windows.h>
#endif
#include <unistd.h>

#include <nlohmann/json.hpp>

#include <uf_object_types.h>

#include "Driver.hpp"
#include "HostSession.hpp"
#include "core/Core.hpp"
#include "core/Model.hpp"

namespace host {
namespace {

using Json = nlohmann::ordered_json;
using core::Attribute;
using core::BodyImpl;
using core::PartImpl;
using NXOpen::NXObject;

const char kFormat[] = "vornadel-part/1";
constexpr long long kLastFileTag = 0x7FFFFFFF;  // fresh tags of other objects start above

const char* const kStateNames[] = {"work", "selectable", "visible", "invisible"};  // by Layer::State

// ---------------------------------------------------------------------------------------------
// Places in the file

bool IsIdentifier(const std::string& key) {
    if (key.empty() || std::isdigit(static_cast<unsigned char>(key[0]))) return false;
    for (char c : key)
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_') return false;
    return true;
}

// The JSON path of a member of path: "bodies[3].layer", "attributes[\"名称\"]".
std::string Member(const std::string& path, const std::string& key) {
    if (IsIdentifier(key)) return path.empty() ? key : path + "." + key;
    return path + "[" + Json(key).dump() + "]";
}

std::string Element(const std::string& path, size_t index) { return path + "[" + std::to_string(index) + "]"; }

// A value as a message shows it: scalars as JSON writes them, objects and arrays by their kind
// (writing those out would be long, and recursive for a deeply nested one).
std::string Show(const Json& value) {
    if (value.is_object()) return "an object";
    if (value.is_array()) return "an array";
    return value.dump();
}

// Builds the document from the parser's events. It refuses a key that an object repeats (JSON
// allows it; keeping one of the values would lose data) and keeps where the parser stopped on an
// error, a number too large for a double included. Each element of the top-level "bodies" array
// goes to the body handler as soon as it is complete and is not kept: a mould's document never
// holds more than one body (the array stays, empty).
class DocumentBuilder : public nlohmann::json_sax<Json> {
public:
    using BodyHandler = std::function<void(Json& body, size_t index)>;
    explicit DocumentBuilder(BodyHandler onBody) : onBody_(std::move(onBody)) {}

    bool null() override { return Add(Json()); }
    bool boolean(bool value) override { return Add(Json(value)); }
    bool number_integer(number_integer_t value) override { return Add(Json(value)); }
    bool number_unsigned(number_unsigned_t value) override { return Add(Json(value)); }
    bool number_float(number_float_t value, const string_t&) override { return Add(Json(value)); }
    bool string(string_t& value) override { return Add(Json(std::move(value))); }
    bool binary(binary_t&) override { return false; }  // JSON text has no binary values
    bool start_object(std::size_t) override { return Open(Json::object()); }
    bool start_array(std::size_t) override { return Open(Json::array()); }
    bool end_object() override { return Close(); }
    bool end_array() override { return Close(); }

    bool key(string_t& key) override {
        if (frames_.back().value->contains(key)) {
            duplicate_ = Member(Path(), key);
            return false;
        }
        frames_.back().key = key;
        return true;
    }

    bool parse_error(std::size_t position, const std::string&, const Json::exception& error) override {
        errorPosition_ = position;
        error_ = error.what();
        return false;
    }

    Json& Root() { return root_; }
    // The path of the first repeated key; "" when there is none.
    const std::string& Duplicate() const { return duplicate_; }
    // The parser's message and its byte count (1 for the first byte) where it stopped.
    const std::string& Error() const { return error_; }
    size_t ErrorPosition() const { return errorPosition_; }

private:
    struct Frame {
        Json* value;
        std::string key;
    };

    // Inside the top-level "bodies" array, directly.
    bool InBodies() const {
        return frames_.size() == 2 && frames_[0].key == "bodies" && frames_[1].value->is_array();
    }

    void HandBody(Json& body) { onBody_(body, bodiesSeen_++); }

    bool Add(Json value) {
        if (InBodies() && !value.is_structured()) {
            HandBody(value);
            return true;
        }
        if (frames_.empty()) {
            root_ = std::move(value);
        } else if (frames_.back().value->is_array()) {
            frames_.back().value->push_back(std::move(value));
        } else {
            (*frames_.back().value)[frames_.back().key] = std::move(value);
        }
        return true;
    }

    // A new object or array is added where a value goes and receives the values that follow.
    // Only the innermost container grows, so the pointers to the outer ones stay valid.
    bool Open(Json container) {
        Add(std::move(container));
        Json* added = frames_.empty() ? &root_
                      : frames_.back().value->is_array() ? &frames_.back().value->back()
                                                         : &(*frames_.back().value)[frames_.back().key];
        frames_.push_back(Frame{added, std::string()});
        return true;
    }

    bool Close() {
        frames_.pop_back();
        if (InBodies()) {
            HandBody(frames_.back().value->back());
            frames_.back().value->erase(frames_.back().value->size() - 1);
        }
        return true;
    }

    // The path of the innermost open object or array.
    std::string Path() const {
        std::string path;
        for (size_t i = 0; i + 1 < frames_.size(); ++i) {
            const Frame& frame = frames_[i];
            // The bodies array keeps only the body being read.
            const size_t last = i == 1 && frames_[0].key == "bodies" ? bodiesSeen_ : frame.value->size() - 1;
            path = frame.value->is_array() ? Element(path, last) : Member(path, frame.key);
        }
        return path;
    }

    BodyHandler onBody_;
    size_t bodiesSeen_ = 0;
    Json root_;
    std::vector<Frame> frames_;
    std::string duplicate_;
    std::string error_;
    size_t errorPosition_ = 0;
};

// The deepest nesting of arrays and objects a part file may have: the format needs six levels.
// Deeper input is refused before it is parsed, so that no part of the host ever works through
// an arbitrarily deep document.
constexpr size_t kMaxDepth = 100;

// What a first pass over the text finds before it is parsed.
struct Outline {
    // The byte count (1 for the first byte) of the array or object that opens level
    // kMaxDepth + 1; 0 when the text nests no deeper than kMaxDepth.
    size_t tooDeepAt = 0;
    // The objects in the top-level "bodies" array: the progress line counts towards it.
    long bodies = 0;
};

// Brackets inside strings do not count.
Outline Survey(const std::string& text) {
    Outline outline;
    size_t depth = 0;
    bool inString = false;
    size_t stringStart = 0;  // of the last string at depth 1
    std::string_view lastString, key;
    bool inBodies = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\') ++i;
            else if (c == '"') {
                inString = false;
                if (depth == 1) lastString = std::string_view(text).substr(stringStart, i - stringStart);
            }
        } else if (c == '"') {
            inString = true;
            stringStart = i + 1;
        } else if (c == ':' && depth == 1) {
            key = lastString;
        } else if (c == '[' || c == '{') {
            if (++depth > kMaxDepth) {
                outline.tooDeepAt = i + 1;
                return outline;
            }
            if (depth == 2) inBodies = c == '[' && key == "bodies";
            if (depth == 3 && c == '{' && inBodies) ++outline.bodies;
        } else if ((c == ']' || c == '}') && depth > 0) {
            --depth;
        }
    }
    return outline;
}

// ---------------------------------------------------------------------------------------------
// Loading

class Loader {
public:
    explicit Loader(const std::string& file) : file_(file) {}

    std::unique_ptr<PartImpl> Load() {
        auto part = std::make_unique<PartImpl>();
        // Bodies are read while the text is parsed; the first body that fails is reported where
        // the file's order of checks reaches the bodies.
        std::map<long long, size_t> tags;
        std::exception_ptr bodyError;
        Activity& activity = CurrentActivity();
        auto readBody = [&](const Json& entry, size_t i) {
            if (bodyError) return;
            try {
                std::string path = Element("bodies", i);
                part->bodies.push_back(ReadBody(entry, path, part.get()));
                activity.bodiesLoaded = static_cast<long>(i + 1);
                auto seen = tags.emplace(part->bodies.back()->fileTag, i);
                if (!seen.second)
                    Fail(path + ".tag", std::to_string(seen.first->first) + " is also the tag of " +
                                            Element("bodies", seen.first->second));
                for (const auto* list : {&part->bodies.back()->faces, &part->bodies.back()->edges}) {
                    for (const auto& object : *list) {
                        auto again = tags.emplace(object->fileTag, i);
                        if (!again.second)
                            Fail(path, std::to_string(object->fileTag) + " is the tag of a face or edge and also of " +
                                           Element("bodies", again.first->second) + " or one of its faces or edges");
                    }
                }
            } catch (const PartFileError&) {
                bodyError = std::current_exception();
            }
        };
        const Json root = Parse(Read(), readBody);
        if (!root.is_object()) Fail("", "the file must hold one JSON object");
        Keys(root, "", {"format", "leaf", "attributes", "work_layer", "layer_states", "mass_props", "bodies"});

        const Json& format = Required(root, "", "format");
        if (!format.is_string() || format.get<std::string>() != kFormat)
            Fail("format", Show(format) + " is not \"" + kFormat + "\"");

        part->leaf = Text(Required(root, "", "leaf"), "leaf");
        if (part->leaf.empty()) Fail("leaf", "the leaf name is empty");
        CheckLeafIsAFileName(root["leaf"].get<std::string>());
        part->fullPath = Utf8ToGbk(std::filesystem::absolute(file_).lexically_normal().string());
        if (root.contains("attributes")) ReadAttributes(root["attributes"], "attributes", part->attributes);

        int work = root.contains("work_layer") ? Layer(root["work_layer"], "work_layer") : 1;
        part->layers.MakeWork(work);
        if (root.contains("layer_states")) ReadLayerStates(root["layer_states"], *part);
        if (root.contains("mass_props")) {
            const Json& mode = root["mass_props"];
            if (mode != "exact" && mode != "numerical")
                Fail("mass_props", Show(mode) + " is not \"exact\" or \"numerical\"");
            part->numericalMassProps = mode == "numerical";
        }

        if (root.contains("bodies")) {
            if (!root["bodies"].is_array()) Fail("bodies", "must be an array of bodies");
            if (bodyError) std::rethrow_exception(bodyError);
        }
        return part;
    }

private:
    [[noreturn]] void Fail(const std::string& path, const std::string& what) const {
        throw PartFileError(file_ + ": " + (path.empty() ? std::string() : path + ": ") + what);
    }

    std::string Read() const {
        std::error_code ignored;
        if (std::filesystem::is_directory(std::filesystem::u8path(file_), ignored)) throw PartFileError(file_ + ": cannot be read: it is a folder");
        std::ifstream in(std::filesystem::u8path(file_), std::ios::binary);
        if (!in) throw PartFileError(file_ + ": cannot be read: " + std::strerror(errno));
        // Read at once into a string of the file's size, not grown a piece at a time.
        std::string bytes;
        in.seekg(0, std::ios::end);
        const std::streamoff size = in.tellg();
        in.seekg(0, std::ios::beg);
        if (size > 0) {
            bytes.resize(static_cast<size_t>(size));
            in.read(&bytes[0], size);
            bytes.resize(static_cast<size_t>(in.gcount()));
        } else {  // no size to ask (a pipe): read to the end
            in.clear();
            bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        }
        if (in.bad()) throw PartFileError(file_ + ": cannot be read: " + std::strerror(errno));
        return bytes;
    }

    Json Parse(const std::string& text, const DocumentBuilder::BodyHandler& onBody) const {
        const Outline outline = Survey(text);
        if (outline.tooDeepAt != 0)
            FailAt(text, outline.tooDeepAt, "arrays and objects nested deeper than " + std::to_string(kMaxDepth) + " levels");
        CurrentActivity().bodiesInFile = outline.bodies;
        DocumentBuilder builder(onBody);
        if (!Json::sax_parse(text, &builder)) {
            if (!builder.Duplicate().empty()) Fail(builder.Duplicate(), "the key appears twice");
            FailAt(text, builder.ErrorPosition(), Reason(builder.Error()));
        }
        return std::move(builder.Root());
    }

    [[noreturn]] void FailAt(const std::string& text, size_t position, const std::string& what) const {
        throw PartFileError(file_ + ":" + LineAndColumn(text, position) + ": " + what);
    }

    // "3:14": line and column (from 1; the column counts bytes) of the byte at position
    // (nlohmann's byte count, 1 for the first byte).
    static std::string LineAndColumn(const std::string& text, size_t position) {
        size_t line = 1, column = 1;
        for (size_t i = 0; i + 1 < position && i < text.size(); ++i) {
            if (text[i] == '\n') {
                ++line;
                column = 1;
            } else {
                ++column;
            }
        }
        return std::to_string(line) + ":" + std::to_string(column);
    }

    // nlohmann's "[json.exception.parse_error.101] parse error at line 1, column 5: syntax
    // error ..." or "[json.exception.out_of_range.406] number overflow parsing '1e999'" without
    // the parts the message already has.
    static std::string Reason(const std::string& what) {
        size_t colon = what.find(": ");
        if (colon != std::string::npos) return what.substr(colon + 2);
        size_t bracket = what.find("] ");
        return bracket == std::string::npos ? what : what.substr(bracket + 2);
    }

    void Keys(const Json& object, const std::string& path, std::initializer_list<const char*> allowed) const {
        for (auto it = object.begin(); it != object.end(); ++it) {
            bool known = false;
            for (const char* key : allowed) known = known || it.key() == key;
            if (!known) Fail(Member(path, it.key()), "unknown key");
        }
    }

    const Json& Required(const Json& object, const std::string& path, const char* key) const {
        if (!object.contains(key)) Fail(Member(path, key), "missing");
        return object[key];
    }

    // In NX a part's leaf name is the name of its file: the export makes a folder and a file of
    // it, so a name that is no Windows file name (a folder separator, "..", a character Windows
    // forbids) would write somewhere else. Checked on the UTF-8 text: a GBK trail byte can be '\\'.
    void CheckLeafIsAFileName(const std::string& utf8) const {
        static const char kForbidden[] = "\\/:*?\"<>|";
        for (char c : utf8) {
            if (static_cast<unsigned char>(c) < 0x20)
                Fail("leaf", Show(Json(utf8)) + " is not a file name in NX: it holds a control character");
            if (std::strchr(kForbidden, c) != nullptr)
                Fail("leaf", Show(Json(utf8)) + " is not a file name in NX: it holds '" + std::string(1, c) + "'");
        }
        if (utf8.find("..") != std::string::npos)
            Fail("leaf", Show(Json(utf8)) + " is not a file name in NX: it holds \"..\"");
    }

    // A JSON string as GBK.
    std::string Text(const Json& value, const std::string& path) const {
        if (!value.is_string()) Fail(path, Show(value) + " is not a string");
        return Gbk(value.get<std::string>(), path, "text");
    }

    // UTF-8 text of the file as GBK. The plug-in reads texts as C strings, so a NUL character
    // would silently cut one short: it is refused.
    std::string Gbk(const std::string& utf8, const std::string& path, const std::string& what) const {
        if (utf8.find('\0') != std::string::npos)
            Fail(path, what + " holds a NUL character (\\u0000), which would end it inside NX");
        try {
            return Utf8ToGbkStrict(utf8);
        } catch (const std::runtime_error& e) {
            Fail(path, what + " not representable in GBK: " + e.what());
        }
    }

    long long Integer(const Json& value, const std::string& path, long long low, long long high) const {
        if (!value.is_number_integer()) Fail(path, Show(value) + " is not an integer");
        if (value.is_number_unsigned() && value.get<unsigned long long>() > static_cast<unsigned long long>(high))
            Fail(path, Show(value) + " is outside " + std::to_string(low) + ".." + std::to_string(high));
        long long n = value.get<long long>();
        if (n < low || n > high)
            Fail(path, Show(value) + " is outside " + std::to_string(low) + ".." + std::to_string(high));
        return n;
    }

    int Layer(const Json& value, const std::string& path) const {
        return static_cast<int>(Integer(value, path, 1, 256));
    }

    double Number(const Json& value, const std::string& path) const {
        if (!value.is_number()) Fail(path, Show(value) + " is not a number");
        return value.get<double>();
    }

    double Size(const Json& object, const std::string& path, const char* key) const {
        std::string place = Member(path, key);
        double size = Number(Required(object, path, key), place);
        if (!(size > 0)) Fail(place, Show(object[key]) + " is not a positive size");
        return size;
    }

    bool Flag(const Json& value, const std::string& path) const {
        if (!value.is_boolean()) Fail(path, Show(value) + " is not true or false");
        return value.get<bool>();
    }

    core::Vec3 Triple(const Json& value, const std::string& path) const {
        if (!value.is_array() || value.size() != 3) Fail(path, "must be an array of three numbers");
        return {Number(value[0], Element(path, 0)), Number(value[1], Element(path, 1)), Number(value[2], Element(path, 2))};
    }

    // "title": "text" | {"integer": n} | {"real": x} | {"boolean": b} | {"time": "text"} | null
    void ReadAttributes(const Json& attributes, const std::string& path, core::AttributeList& list) const {
        if (!attributes.is_object()) Fail(path, "must be an object of attributes");
        list.Reserve(attributes.size());
        for (auto it = attributes.begin(); it != attributes.end(); ++it) {
            std::string place = Member(path, it.key());
            Attribute a;
            a.title = Gbk(it.key(), place, "title");
            if (a.title.empty()) Fail(place, "the attribute title is empty");
            const Json& value = it.value();
            if (value.is_string()) {
                a.type = NXObject::AttributeTypeString;
                a.text = Text(value, place);
            } else if (value.is_null()) {
                a.type = NXObject::AttributeTypeNull;
            } else if (value.is_object() && value.size() == 1) {
                const std::string kind = value.begin().key();
                const Json& v = value.begin().value();
                const std::string vplace = Member(place, kind);
                if (kind == "integer") {
                    a.type = NXObject::AttributeTypeInteger;
                    a.integer = static_cast<int>(Integer(v, vplace, INT_MIN, INT_MAX));
                } else if (kind == "real") {
                    a.type = NXObject::AttributeTypeReal;
                    a.real = Number(v, vplace);
                } else if (kind == "boolean") {
                    a.type = NXObject::AttributeTypeBoolean;
                    a.boolean = Flag(v, vplace);
                } else if (kind == "time") {
                    a.type = NXObject::AttributeTypeTime;
                    a.text = Text(v, vplace);
                } else {
                    Fail(vplace, "not an attribute type (integer, real, boolean, time)");
                }
            } else {
                Fail(place, Show(value) + " is not an attribute value (a string, null, or one of "
                                          "{\"integer\": n}, {\"real\": x}, {\"boolean\": b}, {\"time\": \"...\"})");
            }
            list.Set(a);
        }
    }

    void ReadLayerStates(const Json& states, PartImpl& part) const {
        const std::string path = "layer_states";
        if (!states.is_object()) Fail(path, "must be an object of layer states");
        for (auto it = states.begin(); it != states.end(); ++it) {
            std::string place = Member(path, it.key());
            const std::string& key = it.key();
            bool decimal = !key.empty() && key.size() <= 3 && key[0] != '0';
            for (char c : key) decimal = decimal && std::isdigit(static_cast<unsigned char>(c));
            int layer = decimal ? std::stoi(key) : 0;
            if (!core::IsLayerNumber(layer)) Fail(place, "not a layer number 1..256");
            if (layer == part.layers.work) Fail(place, "layer " + key + " is the work layer (work_layer)");
            const Json& state = it.value();
            std::string name = state.is_string() ? state.get<std::string>() : std::string();
            if (name == "selectable") part.layers.states[layer] = NXOpen::Layer::StateSelectable;
            else if (name == "visible") part.layers.states[layer] = NXOpen::Layer::StateVisible;
            else if (name == "invisible") part.layers.states[layer] = NXOpen::Layer::StateHidden;
            else Fail(place, Show(state) + " is not a layer state (selectable, visible, invisible)");
        }
    }

    std::unique_ptr<BodyImpl> ReadBody(const Json& entry, const std::string& path, PartImpl* part) const {
        if (!entry.is_object()) Fail(path, "must be an object");
        Keys(entry, path, {"tag", "name", "layer", "color", "blanked", "highlighted", "attributes", "solid", "at", "rotate",
                           "faces", "edges"});
        auto body = std::make_unique<BodyImpl>(part, part->bodies.size());
        body->fileTag = static_cast<tag_t>(Integer(Required(entry, path, "tag"), Member(path, "tag"), 1, kLastFileTag));
        if (entry.contains("name")) body->name = Text(entry["name"], Member(path, "name"));
        body->layer = Layer(Required(entry, path, "layer"), Member(path, "layer"));
        body->color = static_cast<int>(Integer(Required(entry, path, "color"), Member(path, "color"), 1, 216));
        if (entry.contains("blanked")) body->blanked = Flag(entry["blanked"], Member(path, "blanked"));
        if (entry.contains("highlighted")) body->highlighted = Flag(entry["highlighted"], Member(path, "highlighted"));
        if (entry.contains("attributes")) ReadAttributes(entry["attributes"], Member(path, "attributes"), body->attributes);
        body->solid = ReadSolid(Required(entry, path, "solid"), Member(path, "solid"));
        if (entry.contains("at")) body->placement.at = Triple(entry["at"], Member(path, "at"));
        if (entry.contains("rotate")) body->placement.rotate = Triple(entry["rotate"], Member(path, "rotate"));
        if (entry.contains("faces")) ReadTopology(entry["faces"], Member(path, "faces"), body.get(), UF_solid_face_subtype, body->faces);
        if (entry.contains("edges")) ReadTopology(entry["edges"], Member(path, "edges"), body.get(), UF_solid_edge_subtype, body->edges);
        return body;
    }

    // "faces" or "edges": the tags of a body's faces or edges, which a selection answer may name.
    void ReadTopology(const Json& entry, const std::string& path, core::BodyImpl* body, int subtype,
                      std::vector<std::unique_ptr<core::TopologyImpl>>& into) const {
        if (!entry.is_array()) Fail(path, "must be an array of tags");
        for (size_t i = 0; i < entry.size(); ++i) {
            const tag_t tag = static_cast<tag_t>(Integer(entry[i], Element(path, i), 1, kLastFileTag));
            into.push_back(std::make_unique<core::TopologyImpl>(body, subtype, tag));
        }
    }

    core::CylinderSection Section(const Json& entry, const std::string& path) const {
        if (!entry.is_object()) Fail(path, "must be an object {\"d\": ..., \"l\": ...}");
        Keys(entry, path, {"d", "l"});
        return core::CylinderSection{Size(entry, path, "d"), Size(entry, path, "l")};
    }

    core::Solid ReadSolid(const Json& entry, const std::string& path) const {
        if (!entry.is_object()) Fail(path, "must be an object with a shape");
        const Json& shape = Required(entry, path, "shape");
        core::Solid solid;
        std::string name = shape.is_string() ? shape.get<std::string>() : std::string();
        if (name == "box") {
            Keys(entry, path, {"shape", "x", "y", "z"});
            solid.shape = core::Solid::Shape::Box;
            solid.size = {Size(entry, path, "x"), Size(entry, path, "y"), Size(entry, path, "z")};
        } else if (name == "cylinder") {
            Keys(entry, path, {"shape", "d", "l"});
            solid.shape = core::Solid::Shape::Cylinder;
            solid.sections.push_back(core::CylinderSection{Size(entry, path, "d"), Size(entry, path, "l")});
        } else if (name == "stack") {
            Keys(entry, path, {"shape", "parts"});
            solid.shape = core::Solid::Shape::Stack;
            const Json& parts = Required(entry, path, "parts");
            std::string place = Member(path, "parts");
            if (!parts.is_array() || parts.empty()) Fail(place, "must be a non-empty array of {\"d\": ..., \"l\": ...}");
            for (size_t i = 0; i < parts.size(); ++i) solid.sections.push_back(Section(parts[i], Element(place, i)));
        } else {
            Fail(Member(path, "shape"), Show(shape) + " is not a shape (box, cylinder, stack)");
        }
        return solid;
    }

    std::string file_;
};

// ---------------------------------------------------------------------------------------------
// Saving, in the canonical form of docs/part-file.md

class Writer {
public:
    explicit Writer(const std::string& file) : file_(file) {}

    std::string Write(const PartImpl& part) {
        out_ << "{\n";
        out_ << "  \"format\": " << Json(kFormat).dump() << ",\n";
        out_ << "  \"leaf\": " << String(part.leaf, "leaf") << ",\n";
        out_ << "  \"attributes\": ";
        WriteAttributes(part.attributes, "attributes", "  ");
        out_ << ",\n";
        out_ << "  \"work_layer\": " << part.layers.work << ",\n";
        out_ << "  \"layer_states\": ";
        std::vector<int> listed;
        for (int layer = 1; layer <= 256; ++layer)
            if (layer != part.layers.work && part.layers.states[layer] != NXOpen::Layer::StateSelectable)
                listed.push_back(layer);
        if (listed.empty()) {
            out_ << "{}";
        } else {
            out_ << "{\n";
            for (size_t i = 0; i < listed.size(); ++i)
                out_ << "    \"" << listed[i] << "\": \"" << kStateNames[part.layers.states[listed[i]]] << "\""
                     << (i + 1 < listed.size() ? ",\n" : "\n");
            out_ << "  }";
        }
        out_ << ",\n";
        if (part.numericalMassProps) out_ << "  \"mass_props\": \"numerical\",\n";
        out_ << "  \"bodies\": ";
        if (part.bodies.empty()) {
            out_ << "[]";
        } else {
            out_ << "[\n";
            for (size_t i = 0; i < part.bodies.size(); ++i) {
                WriteBody(*part.bodies[i], Element("bodies", i));
                out_ << (i + 1 < part.bodies.size() ? ",\n" : "\n");
            }
            out_ << "  ]";
        }
        out_ << "\n}\n";
        return out_.str();
    }

private:
    // GBK text as a JSON string. Bytes that are not GBK (the plug-in's mistake) are refused, not
    // replaced: a save never changes text silently.
    std::string String(const std::string& gbk, const std::string& path) const {
        std::string utf8 = GbkToUtf8(gbk);
        if (Utf8ToGbk(utf8) != gbk) throw PartFileError(file_ + ": " + path + ": the text is not valid GBK");
        return Json(utf8).dump();
    }

    // Integral values as integers ("20", not "20.0"), others in their shortest exact form.
    static std::string Number(double value) {
        if (value == 0) return "0";  // also -0
        if (std::fabs(value) < 1e15 && value == std::floor(value)) return std::to_string(static_cast<long long>(value));
        return core::ShortestReal(value);
    }

    static std::string Triple(const core::Vec3& v) {
        return "[" + Number(v[0]) + ", " + Number(v[1]) + ", " + Number(v[2]) + "]";
    }

    void WriteAttributes(const core::AttributeList& list, const std::string& path, const std::string& indent) {
        const std::vector<Attribute>& all = list.All();
        if (all.empty()) {
            out_ << "{}";
            return;
        }
        out_ << "{\n";
        for (size_t i = 0; i < all.size(); ++i) {
            const Attribute& a = all[i];
            std::string place = Member(path, GbkToUtf8(a.title));
            out_ << indent << "  " << String(a.title, place) << ": ";
            switch (a.type) {
            case NXObject::AttributeTypeString: out_ << String(a.text, place); break;
            case NXObject::AttributeTypeNull: out_ << "null"; break;
            case NXObject::AttributeTypeInteger: out_ << "{\"integer\": " << a.integer << "}"; break;
            case NXObject::AttributeTypeReal: out_ << "{\"real\": " << Number(a.real) << "}"; break;
            case NXObject::AttributeTypeBoolean: out_ << "{\"boolean\": " << (a.boolean ? "true" : "false") << "}"; break;
            default: out_ << "{\"time\": " << String(a.text, place) << "}"; break;
            }
            out_ << (i + 1 < all.size() ? ",\n" : "\n");
        }
        out_ << indent << "}";
    }

    void WriteBody(const BodyImpl& body, const std::string& path) {
        const std::string indent = "      ";
        out_ << "    {\n";
        out_ << indent << "\"tag\": " << body.Tag() << ",\n";
        if (!body.name.empty()) out_ << indent << "\"name\": " << String(body.name, path + ".name") << ",\n";
        out_ << indent << "\"layer\": " << body.layer << ",\n";
        out_ << indent << "\"color\": " << body.color << ",\n";
        out_ << indent << "\"blanked\": " << (body.blanked ? "true" : "false") << ",\n";
        if (body.highlighted) out_ << indent << "\"highlighted\": true,\n";
        out_ << indent << "\"attributes\": ";
        WriteAttributes(body.attributes, path + ".attributes", indent);
        out_ << ",\n";
        out_ << indent << "\"solid\": " << Solid(body.solid) << ",\n";
        out_ << indent << "\"at\": " << Triple(body.placement.at) << ",\n";
        out_ << indent << "\"rotate\": " << Triple(body.placement.rotate);
        WriteTopology("faces", body.faces, indent);
        WriteTopology("edges", body.edges, indent);
        out_ << "\n    }";
    }

    // Faces and edges are written only for a body that has some.
    void WriteTopology(const char* key, const std::vector<std::unique_ptr<core::TopologyImpl>>& list, const std::string& indent) {
        if (list.empty()) return;
        out_ << ",\n" << indent << "\"" << key << "\": [";
        for (size_t i = 0; i < list.size(); ++i) out_ << (i ? ", " : "") << list[i]->Tag();
        out_ << "]";
    }

    static std::string Solid(const core::Solid& solid) {
        switch (solid.shape) {
        case core::Solid::Shape::Box:
            return "{\"shape\": \"box\", \"x\": " + Number(solid.size[0]) + ", \"y\": " + Number(solid.size[1]) +
                   ", \"z\": " + Number(solid.size[2]) + "}";
        case core::Solid::Shape::Cylinder:
            return "{\"shape\": \"cylinder\", \"d\": " + Number(solid.sections[0].d) +
                   ", \"l\": " + Number(solid.sections[0].l) + "}";
        default: {
            std::string text = "{\"shape\": \"stack\", \"parts\": [";
            for (size_t i = 0; i < solid.sections.size(); ++i)
                text += (i > 0 ? ", " : "") + std::string("{\"d\": ") + Number(solid.sections[i].d) +
                        ", \"l\": " + Number(solid.sections[i].l) + "}";
            return text + "]}";
        }
        }
    }

    std::string file_;
    std::ostringstream out_;
};

}  // namespace

NXOpen::Part* LoadWorkPart(const std::string& path) {
    std::unique_ptr<PartImpl> part = Loader(path).Load();
    core::SessionState& state = core::State();
    state.workPart.reset();  // frees the old bodies' tags, which the new part may reuse
    for (const auto& body : part->bodies) {
        Tags::Assign(body.get(), body->fileTag);
        for (const auto& face : body->faces) Tags::Assign(face.get(), face->fileTag);
        for (const auto& edge : body->edges) Tags::Assign(edge.get(), edge->fileTag);
    }
    state.workPart = std::move(part);
    return state.workPart.get();
}

namespace {

// The saved copy takes the place of the part file (Windows' rename refuses an existing target).
bool PutInPlace(const std::filesystem::path& temporary, const std::filesystem::path& path) {
#ifdef _WIN32
    if (MoveFileExW(temporary.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
    errno = EACCES;
    return false;
#else
    return std::rename(temporary.c_str(), path.c_str()) == 0;
#endif
}

}  // namespace

void SaveWorkPart(const std::string& path) {
    const PartImpl* part = core::WorkPartImpl();
    if (part == nullptr) throw PartFileError(path + ": there is no work part to save");
    const std::string text = Writer(path).Write(*part);
    const std::filesystem::path temporary = std::filesystem::u8path(path + ".saving-" + std::to_string(getpid()));
    std::error_code ignored;
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out << text;
        out.close();
        if (!out) {
            int error = errno;
            std::filesystem::remove(temporary, ignored);
            throw PartFileError(path + ": cannot be written: " + std::strerror(error));
        }
    }
    if (!PutInPlace(temporary, std::filesystem::u8path(path))) {
        int error = errno;
        std::filesystem::remove(temporary, ignored);
        throw PartFileError(path + ": cannot be written: " + std::strerror(error));
    }
}

}  // namespace host
