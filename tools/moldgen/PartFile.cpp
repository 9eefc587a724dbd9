// The part-file text of a mould, in the host's canonical form: the keys in the host's order, two
// spaces of indent, one line per attribute, shapes and triples on one line, integral numbers
// without a decimal point. Lengths are written by Mm: the host writes the shortest text that reads
// back as the same double, which for one decimal is that text. A mould written here loads in the
// host and saves back byte for byte.
#include <sstream>

#include <nlohmann/json.hpp>

#include "Mould.hpp"

namespace moldgen {

namespace {

std::string Quoted(const std::string& utf8) { return nlohmann::json(utf8).dump(); }

std::string SolidText(const Solid& solid) {
    switch (solid.shape) {
    case Solid::Shape::Box:
        return "{\"shape\": \"box\", \"x\": " + Mm(solid.x) + ", \"y\": " + Mm(solid.y) + ", \"z\": " + Mm(solid.z) + "}";
    case Solid::Shape::Cylinder:
        return "{\"shape\": \"cylinder\", \"d\": " + Mm(solid.sections[0].d) + ", \"l\": " + Mm(solid.sections[0].l) + "}";
    case Solid::Shape::Stack:
        break;
    }
    std::string text = "{\"shape\": \"stack\", \"parts\": [";
    for (size_t i = 0; i < solid.sections.size(); ++i)
        text += (i > 0 ? ", " : "") + std::string("{\"d\": ") + Mm(solid.sections[i].d) + ", \"l\": " +
                Mm(solid.sections[i].l) + "}";
    return text + "]}";
}

void WriteAttributes(std::ostream& out, const std::vector<Attribute>& attributes, const std::string& indent) {
    if (attributes.empty()) {
        out << "{}";
        return;
    }
    out << "{\n";
    for (size_t i = 0; i < attributes.size(); ++i)
        out << indent << "  " << Quoted(attributes[i].title) << ": " << Quoted(attributes[i].value)
            << (i + 1 < attributes.size() ? ",\n" : "\n");
    out << indent << "}";
}

void WriteBody(std::ostream& out, const Body& body) {
    const std::string indent = "      ";
    out << "    {\n";
    out << indent << "\"tag\": " << body.tag << ",\n";
    out << indent << "\"layer\": " << body.layer << ",\n";
    out << indent << "\"color\": " << body.color << ",\n";
    out << indent << "\"blanked\": " << (body.blanked ? "true" : "false") << ",\n";
    out << indent << "\"attributes\": ";
    WriteAttributes(out, body.attributes, indent);
    out << ",\n";
    out << indent << "\"solid\": " << SolidText(body.solid) << ",\n";
    out << indent << "\"at\": [" << Mm(body.at[0]) << ", " << Mm(body.at[1]) << ", " << Mm(body.at[2]) << "],\n";
    out << indent << "\"rotate\": [" << body.rotate[0] << ", " << body.rotate[1] << ", " << body.rotate[2] << "]\n";
    out << "    }";
}

}  // namespace

std::string PartFileText(const Mould& mould) {
    std::ostringstream out;
    out << "{\n";
    out << "  \"format\": \"vornadel-part/1\",\n";
    out << "  \"leaf\": " << Quoted(mould.leaf) << ",\n";
    out << "  \"attributes\": ";
    WriteAttributes(out, mould.attributes, "  ");
    out << ",\n";
    out << "  \"work_layer\": " << mould.workLayer << ",\n";
    out << "  \"layer_states\": ";
    if (mould.layerStates.empty()) {
        out << "{}";
    } else {
        out << "{\n";
        size_t i = 0;
        for (const auto& [layer, state] : mould.layerStates)
            out << "    \"" << layer << "\": " << Quoted(state) << (++i < mould.layerStates.size() ? ",\n" : "\n");
        out << "  }";
    }
    out << ",\n";
    out << "  \"bodies\": ";
    if (mould.bodies.empty()) {
        out << "[]";
    } else {
        out << "[\n";
        for (size_t i = 0; i < mould.bodies.size(); ++i) {
            WriteBody(out, mould.bodies[i]);
            out << (i + 1 < mould.bodies.size() ? ",\n" : "\n");
        }
        out << "  ]";
    }
    out << "\n}\n";
    return out.str();
}

}  // namespace moldgen
