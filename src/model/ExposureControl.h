#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "model/ModelContext.h"

namespace quillon {

/// How far a density key's index stands above the generator's step: the keys "-4" to "+4" have the indexes 0
/// to 8, and the generator's steps 0 to its maximum are centred on them.
[[nodiscard]] double densityOffset(const GeneratorState& state);

/// The automatic exposure control: measuring fields, density, film screens, and the switches and the
/// brightness of the digital modes.
class ExposureControl {
public:
    explicit ExposureControl(ModelContext& context);

    /// Asks for a step of the generator ("FN"); nothing is sent for one that it does not have.
    void SetAECDensity(std::int32_t Density);
    /// The generator has told that it takes this density.
    [[nodiscard]] bool takesDensity(std::int32_t Density) const;
    /// For a key that is held: the host hears of the step, the generator does not.
    void stepLocally(std::int32_t by);
    /// Sets the fields and, unless both others are kUnchanged, film screen and density too. `Density` is a
    /// key's index.
    void AECCommand(bool fieldLeft, bool fieldCenter, bool fieldRight, std::int32_t FilmScreen,
                    std::int32_t Density);
    static constexpr std::int32_t kUnchanged = 1000;

    /// The highest film screen that is on; 0 also when none is.
    [[nodiscard]] std::int32_t AECFilmScreen() const;
    /// Tells the range by the index of its highest key, where "MD" tells its highest step.
    void setMaxAECDensity(std::int32_t value);

private:
    void bindHandlers();
    void addOperations();

    void fmessAECCommand(std::string_view value);
    void fmessAECField(std::string_view value);
    void fmessAECDensity(std::string_view value);
    void fmessAECFilmScreen(std::string_view value);
    void fmessBrightness(std::string_view value);

    void takeField(std::size_t field, bool on);
    /// A step within the generator's range; False while that is not known.
    bool stepDensity(std::int32_t by);
    void stepAndSend(std::int32_t by);

    ModelContext& context_;
    GeneratorState& state_;
    // A field has one key on its page and one among the configuration.
    std::array<std::vector<Control*>, 3> fieldKeys_;
    std::vector<Control*> cmbAECDensity_;
    std::vector<Control*> cmbDAECDensity_;
    std::vector<Control*> cmbAECFilmScreen_;
    Control& txtAECBrightness_;
    Control& txtDAECBrightness_;
};

} // namespace quillon
