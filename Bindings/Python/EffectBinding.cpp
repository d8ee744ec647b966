#include "Python/EffectBinding.h"

#include "DemoGain_MeterLaw.h"
#include "Files/FileError.h"
#include "Host/HostError.h"
#include "Python/Arrays.h"
#include "Python/ParameterNames.h"
#include "Python/ScriptEffect.h"
#include "Surround/Settings/FactoryPresets.h"
#include "Surround/Settings/NumberText.h"
#include "Surround/Settings/QualityText.h"
#include "Surround/Settings/Suggestion.h"
#include "Surround/Settings/TextFile.h"

#include <dlfcn.h>

#include <cmath>
#include <exception>
#include <filesystem>
#include <list>
#include <optional>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

namespace varno {
namespace {

namespace py = pybind11;

// The folder of presets beside this binary. Its path is made absolute while the module is imported.
const std::filesystem::path& presetFolder() {
    static const std::filesystem::path folder = [] {
        Dl_info info{};
        // Any address of this binary.
        if (::dladdr(reinterpret_cast<const void*>(&bindEffect), &info) == 0) {
            return std::filesystem::path();
        }
        return std::filesystem::absolute(info.dli_fname).parent_path() / "factory-presets";
    }();
    return folder;
}

// Ends a long work where Python has an exception for it: Ctrl-C.
void throwIfSignalled() {
    const py::gil_scoped_acquire locked;
    if (PyErr_CheckSignals() != 0) {
        throw py::error_already_set();
    }
}

// A value as the effect reads it. @param isTrue whether the keyword named the true value
std::string valueText(const SDemoGain_Parameter& row, const std::string& keyword, bool isTrue,
                      const py::handle& value) {
    if (!isTrue && py::isinstance<py::str>(value)) {
        return value.cast<std::string>();
    }
    if (isTrue && trueKindOf(row) == TrueKind::kSwitch && !py::isinstance<py::bool_>(value)) {
        throw py::type_error(keyword + " is " + py::repr(value).cast<std::string>() +
                             "; expected True or False");
    }
    const double number = PyFloat_AsDouble(value.ptr());
    if (PyErr_Occurred() != nullptr) {
        PyErr_Clear();
        throw py::type_error(keyword + " is " + py::repr(value).cast<std::string>() + "; expected a number" +
                             (isTrue ? "" : " or a text"));
    }
    return isTrue ? trueValueText(row, number) : textFromNumber(number);
}

std::vector<ParameterText> parameterTexts(const py::kwargs& keywords) {
    std::vector<ParameterText> texts;
    for (const auto& [key, value] : keywords) {
        const auto name = key.cast<std::string>();
        std::vector<std::string> known;
        bool isFound = false;
        for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
            known.insert(known.end(), {normalizedName(row), trueName(row)});
            const bool isTrue = name == trueName(row);
            if (isTrue || name == normalizedName(row)) {
                texts.push_back({row.mIdentifier, valueText(row, name, isTrue, value)});
                isFound = true;
            }
        }
        if (!isFound) {
            throw py::type_error("unknown parameter " + quoted(name) + suggestion(name, known));
        }
    }
    return texts;
}

void loadPreset(ScriptEffect& effect, const std::string& nameOrFile) {
    const auto presets = factoryPresetsIn(presetFolder());
    const auto path = presetFile(nameOrFile, presets);
    if (!path) {
        throw std::invalid_argument(unknownPreset(nameOrFile, presets, "varno.presets() lists"));
    }
    const TextFile file = readTextFile(*path);
    if (!file.refusal.empty()) {
        throw FileError(*path + ": " + file.refusal);
    }
    effect.setPresetText(file.text, *path);
}

std::unique_ptr<ScriptEffect> makeEffect(double rateHz, std::int32_t channels,
                                         const std::optional<std::filesystem::path>& preset,
                                         const std::string& quality, const py::kwargs& parameters) {
    std::unique_ptr<ScriptEffect> effect;
    {
        // The module is called by one thread at a time: nobody waits for it with Python's lock.
        const py::gil_scoped_release unlocked;
        effect = std::make_unique<ScriptEffect>(rateHz, channels, quality);
    }
    if (preset) {
        loadPreset(*effect, preset->string());
    }
    effect->set(parameterTexts(parameters));
    return effect;
}

py::array process(ScriptEffect& effect, const py::object& input, const py::object& out, bool fromStart) {
    const ScriptEffect::Use use(effect);
    SoundArrays arrays(input, out, effect.channels());
    {
        const py::gil_scoped_release unlocked;
        if (fromStart) {
            effect.reset();
        }
        effect.process(arrays.sound(), throwIfSignalled);
    }
    return arrays.finish();
}

std::vector<py::array> processGroup(const std::vector<ScriptEffect*>& effects,
                                    const std::vector<py::object>& inputs) {
    if (effects.size() != inputs.size()) {
        throw std::invalid_argument("there are " + std::to_string(effects.size()) + " effects and " +
                                    std::to_string(inputs.size()) + " arrays; expected one for each");
    }
    std::vector<ScriptEffect::Use> uses;
    uses.reserve(effects.size());
    std::list<SoundArrays> arrays;
    std::vector<Sound> sounds;
    for (std::size_t i = 0; i < effects.size(); ++i) {
        if (effects[i] == nullptr) {
            throw py::type_error("an effect is None; expected varno.Effect");
        }
        if (std::find(effects.begin(), effects.begin() + static_cast<std::ptrdiff_t>(i), effects[i]) !=
            effects.begin() + static_cast<std::ptrdiff_t>(i)) {
            throw std::invalid_argument("an effect is there twice; expected each one once");
        }
        uses.emplace_back(*effects[i]);
        sounds.push_back(arrays.emplace_back(inputs[i], py::none(), effects[i]->channels()).sound());
    }
    {
        const py::gil_scoped_release unlocked;
        ScriptEffect::processTogether(effects, sounds, throwIfSignalled);
    }
    std::vector<py::array> outputs;
    for (SoundArrays& each : arrays) {
        outputs.push_back(each.finish());
    }
    return outputs;
}

// The meters by the names of the module.
py::dict metersOf(const ScriptEffect& effect) {
    py::dict values;
    for (std::size_t tap = 0; tap < effect.meters().ids().size(); ++tap) {
        values[py::str(effect.meterName(tap))] = effect.meters().peak(tap);
    }
    return values;
}

// Runs `work` with the effect while no other thread has it.
template<class Work>
auto used(ScriptEffect& effect, const Work& work) {
    const ScriptEffect::Use use(effect);
    return work();
}

// effect.hot and effect.hot_percent
void bindParameter(py::class_<ScriptEffect>& effectClass, const SDemoGain_Parameter& row) {
    effectClass.def_property(
        normalizedName(row).c_str(),
        [&row](ScriptEffect& effect) { return used(effect, [&] { return effect.normalized(row); }); },
        [&row](ScriptEffect& effect, double value) {
            used(effect, [&] { effect.set({{row.mIdentifier, textFromNumber(value)}}); });
        },
        row.mHelp);
    effectClass.def_property(
        trueName(row).c_str(),
        [&row](ScriptEffect& effect) {
            const double value = used(effect, [&] { return effect.trueValue(row); });
            switch (trueKindOf(row)) {
            case TrueKind::kNumbered:
                return py::object(py::int_(std::lround(value) + 1));
            case TrueKind::kSwitch:
                return py::object(py::bool_(value > 0.0));
            case TrueKind::kNumber:
                break;
            }
            return py::object(py::float_(value));
        },
        [&row](ScriptEffect& effect, const py::object& value) {
            const std::string text = valueText(row, trueName(row), true, value);
            used(effect, [&] { effect.set({{row.mIdentifier, text}}); });
        },
        row.mHelp);
}

void bindSettings(py::class_<ScriptEffect>& effectClass) {
    effectClass
        .def(
            "set",
            [](ScriptEffect& effect, const py::kwargs& parameters) {
                const auto texts = parameterTexts(parameters);
                used(effect, [&] { effect.set(texts); });
            },
            "Sets parameters, as the constructor takes them: all of them or, where one is refused, none.")
        .def(
            "load_preset",
            [](ScriptEffect& effect, const std::filesystem::path& preset) {
                used(effect, [&] { loadPreset(effect, preset.string()); });
            },
            py::arg("preset"),
            "Applies a factory preset by its name or the file of a preset: all parameters but the bypass.")
        .def_property(
            "preset", [](ScriptEffect& effect) { return used(effect, [&] { return effect.presetText(); }); },
            [](ScriptEffect& effect, const std::string& text) {
                used(effect, [&] { effect.setPresetText(text, "the text"); });
            },
            "The settings as the text that the editor copies and pastes: all parameters but the bypass.")
        .def_property(
            "state",
            [](ScriptEffect& effect) {
                const auto bytes = used(effect, [&] { return effect.state(); });
                return py::bytes(reinterpret_cast<const char*>(bytes.data()), bytes.size());
            },
            [](ScriptEffect& effect, const py::bytes& state) {
                const std::string_view bytes = state;
                used(effect, [&] { effect.setState(std::as_bytes(std::span(bytes))); });
            },
            "The settings as the record that hosts keep: all parameters but the bypass.");
}

void bindSound(py::class_<ScriptEffect>& effectClass) {
    effectClass
        .def(
            "__call__",
            [](ScriptEffect& effect, const py::object& clip, const py::object& out) {
                return process(effect, clip, out, true);
            },
            py::arg("clip"), py::kw_only(), py::arg("out") = py::none(),
            "Processes a whole clip, as a new effect with these settings does and varno render: what was "
            "processed before has no influence.")
        .def(
            "process",
            [](ScriptEffect& effect, const py::object& block, const py::object& out) {
                return process(effect, block, out, false);
            },
            py::arg("block"), py::kw_only(), py::arg("out") = py::none(),
            "Processes the next block of a stream.")
        .def(
            "reset", [](ScriptEffect& effect) { used(effect, [&] { effect.reset(); }); },
            "Puts the sound and the meters back to their start; the settings stay.");
}

} // namespace

void bindEffect(py::module_& module) {
    presetFolder();
    py::register_exception_translator([](std::exception_ptr pointer) {
        try {
            std::rethrow_exception(std::move(pointer));
        } catch (const FileError& error) {
            PyErr_SetString(PyExc_OSError, error.what());
        }
    });
    py::class_<ScriptEffect> effectClass(module, "Effect",
                                         "An instance of the effect, for one thread at a time.");
    effectClass
        .def(py::init(&makeEffect), py::arg("rate"), py::arg("channels"), py::kw_only(),
             py::arg("preset") = py::none(), py::arg("quality") = "1x")
        .def_property_readonly("rate", &ScriptEffect::rateHz, "The sample rate in Hz.")
        .def_property_readonly("channels", &ScriptEffect::channels)
        .def_property_readonly("quality",
                               [](const ScriptEffect& effect) { return qualityName(effect.factor()); })
        .def_property_readonly("latency", &ScriptEffect::latencyFrames,
                               "Frames by which the processed sound is late.")
        .def_property_readonly("meters", &metersOf,
                               "The highest values of the meters since the start or the last reset: 1.0 is "
                               "full scale, of gain reductions 32 dB.");
    bindSound(effectClass);
    bindSettings(effectClass);
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        bindParameter(effectClass, row);
    }
    module.def("process_group", &processGroup, py::arg("effects"), py::arg("blocks"),
               "Effect.process of each effect with its block, in one call that takes less time.");
    module.def(
        "presets",
        [] {
            py::dict presets;
            for (const auto& preset : factoryPresetsIn(presetFolder())) {
                presets[py::str(preset.name)] = preset.path;
            }
            return presets;
        },
        "The factory presets: their names, and their files.");
    module.attr("__version__") = VARNO_VERSION;
}

} // namespace varno
