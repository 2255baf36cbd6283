#include "SessionStage.h"

#include <AudioFileFormat.h>
#include <AudioFileWriter.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhost/PluginTechnology.h>
#include <zelcore/Utf.h>

using namespace zelaudiofilterhost;

namespace zeltests {

std::string TestPlugin(const std::string& name) { return std::string(ZEL_TESTPLUGINS_DIR "/") + name; }

DescriptorPtr ReadDescriptor(const std::string& path, std::size_t component) {
    const TechnologyType technology = path.ends_with(".vst3") ? kTechnologyVST3 : kTechnologyVST;
    return AudioFilterDescriptor::ReadModule(PluginLocator(technology, UText(path))).at(component);
}

DescriptorPtr GainDescriptor() { return ReadDescriptor(TestPlugin("vst/good/zel_gain" ZEL_MODULE)); }

SearchFolders::SearchFolders(const std::vector<std::string>& folders) {
    std::vector<zelcore::ustring> texts;
    for (const std::string& folder : folders) texts.push_back(UText(folder));
    for (const TechnologyType type : {kTechnologyVST, kTechnologyVST3})
        PluginModuleInfoManager::GetInstance().GetPluginTechnology(type)->AddPluginDirectories(texts);
}

SearchFolders::~SearchFolders() { PluginModuleInfoManager::GetInstance().ResetToDefaultFolders(); }

void WriteSound(const std::string& path, int channels, int sampleRate, int frames) {
    tessaly::AudioFileWriter writer(path, *tessaly::AudioFileFormat::FindForPath(path), channels, sampleRate, frames);
    const std::vector<float> silence(static_cast<std::size_t>(frames));
    const std::vector<const float*> pointers(static_cast<std::size_t>(channels), silence.data());
    writer.Write(pointers.data(), frames);
    writer.Commit();
}

std::string Text(const zelcore::ustring& text) {
    const zelcore::utf8string utf8 = zelcore::utility::UTF16to8(text);
    return std::string(utf8.begin(), utf8.end());
}

zelcore::ustring UText(const std::string& text) { return zelcore::utility::UTF8to16(text); }

std::vector<float> HearOnes(const tessaly::ChainEffect& effect) {
    constexpr int kFrames = 64;
    AudioFilter& filter = *effect.GetFilter();
    const std::vector<float> ones(kFrames, 1.0f);
    const auto inputCount = static_cast<std::size_t>(filter.GetEffectChannelCount(AudioFilter::kInput));
    const auto outputCount = static_cast<std::size_t>(filter.GetEffectChannelCount(AudioFilter::kOutput));
    std::vector<float> sound(outputCount * kFrames);
    const std::vector<const float*> inputs(inputCount, ones.data());
    std::vector<float*> outputs;
    for (std::size_t i = 0; i < outputCount; ++i) outputs.push_back(&sound[i * kFrames]);
    EXPECT_TRUE(filter.StartProcessing(48000, kFrames));
    filter.ProcessEffect(inputs.data(), outputs.data(), kFrames);
    filter.StopProcessing();
    return sound;
}

}  // namespace zeltests
