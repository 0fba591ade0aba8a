#include "cli/verbs.h"

namespace warpline {

namespace {

using T = CliText;

constexpr ArgumentRow kPanel{"--panel", "WxH", Take::kOptional, T::kPanelOption};
constexpr ArgumentRow kLan{"--lan", "ADDRESS[:PORT]", Take::kOptional, T::kLanOption};
constexpr ArgumentRow kLans{"--lan", "ADDRESS[:PORT]", Take::kSeveral, T::kLansOption};
constexpr ArgumentRow kProjectors{"--projectors", "LIST", Take::kOptional, T::kProjectorsOption};
constexpr ArgumentRow kSerialPort{"--serial", "N:SPEED", Take::kOptional, T::kSerialOption};
constexpr ArgumentRow kUsbPort{"--usb", "N", Take::kOptional, T::kUsbOption};
constexpr ArgumentRow kRecord{kRecordOption, "FILE", Take::kOptional, T::kRecordOption};
constexpr ArgumentRow kRedact{"--redact", "", Take::kFlag, T::kRedactOption};
constexpr ArgumentRow kTimeOut{"--timeout", "MS", Take::kOptional, T::kTimeOutOption};

constexpr ArgumentRow kJson{kJsonOption, "", Take::kFlag, T::kJsonOption};

constexpr ArgumentRow kRegistersArguments[] = {
    {"FILE", "", Take::kRequired, T::kCorrectionFile},
    kPanel,
    {"-o", "OUT.wlr", Take::kOptional, T::kRegisterOutput},
};
constexpr ArgumentRow kProfileArguments[] = {
    {"FILE", "", Take::kRequired, T::kCorrectionFile},
    {"--axis", "h|v", Take::kRequired, T::kAxisOption},
    kPanel,
    {"--preview", "", Take::kFlag, T::kPreviewOption},
};
constexpr ArgumentRow kCurveArguments[] = {
    {"FILE", "", Take::kRequired, T::kCorrectionOrShapeFile},
    {"--axis", "h|v", Take::kOptional, T::kCurveAxisOption},
    {"--samples", "N", Take::kOptional, T::kSamplesOption},
};
constexpr ArgumentRow kFramesArguments[] = {
    {"FILE", "", Take::kRequired, T::kCorrectionOrRegisterFile},
    {"--send", "WHAT", Take::kRequired, T::kSendOption},
    kPanel,
    {"--class", "C", Take::kOptional, T::kClassOption},
    {"--reply5", "B", Take::kOptional, T::kReplyOption},
    {"--mode", "M", Take::kOptional, T::kModeOption},
};
constexpr ArgumentRow kCheckArguments[] = {
    {"FILE", "", Take::kMany, T::kAnyFiles},
    {"--panel", "WxH", Take::kOptional, T::kCheckPanelOption},
    kJson,
};
constexpr ArgumentRow kConvertArguments[] = {
    {"IN", "", Take::kRequired, T::kInputFile},
    {"OUT", "", Take::kRequired, T::kOutputFile},
};
constexpr ArgumentRow kApplyArguments[] = {
    {"FILE", "", Take::kOptional, T::kCorrectionOrRegisterFile},
    kLans,
    kProjectors,
    kSerialPort,
    kUsbPort,
    kTimeOut,
    kRecord,
    kRedact,
    {"--store", "", Take::kFlag, T::kAndStoreOption},
    kJson,
};
constexpr ArgumentRow kStoreArguments[] = {
    {"FILE", "", Take::kOptional, T::kCorrectionFile},
    kLans,
    kProjectors,
    kSerialPort,
    kUsbPort,
    kTimeOut,
    kRecord,
    kRedact,
    kJson,
};
constexpr ArgumentRow kInitializeArguments[] = {kLans,    kProjectors, kSerialPort, kUsbPort,
                                                kTimeOut, kRecord,     kRedact,     kJson};
constexpr ArgumentRow kModeArguments[] = {
    {"MODE", "", Take::kOptional, T::kModeArgument},
    kLans,
    kProjectors,
    kSerialPort,
    kUsbPort,
    kTimeOut,
    kRecord,
    kRedact,
    kJson,
};
constexpr ArgumentRow kVerifyArguments[] = {
    {"FILE", "", Take::kRequired, T::kCorrectionFile},
    {"--state", "STATE.json", Take::kRequired, T::kStateOption},
    kJson,
};

constexpr ArgumentRow kPreviewArguments[] = {
    {"FILE", "", Take::kRequired, T::kCorrectionFile},
    {"-o", "OUT.svg", Take::kRequired, T::kPictureOutput},
    kPanel,
    {"--aux", "", Take::kFlag, T::kAuxOption},
};

constexpr ArgumentRow kPictureArguments[] = {
    {"NAME", "", Take::kRequired, T::kPictureName},
    kPanel,
    {"-o", "OUT.png", Take::kRequired, T::kPngOutput},
    {"--image", "FILE", Take::kOptional, T::kImageOption},
};

constexpr ArgumentRow kSheetArguments[] = {
    {"FILE", "", Take::kRequired, T::kCorrectionFile},
    {"-o", "OUT.html", Take::kRequired, T::kSheetOutput},
    {"--note", "TEXT", Take::kOptional, T::kNoteOption},
    kLan,
    kSerialPort,
    kUsbPort,
    kTimeOut,
    kRecord,
    kRedact,
};

constexpr ArgumentRow kMarksArguments[] = {
    {"PHOTO", "", Take::kRequired, T::kPhotoFile},
    {"-o", "MARKS.csv", Take::kRequired, T::kMarksOutput},
    kPanel,
};

constexpr ArgumentRow kSearchArguments[] = {
    {"--timeout", "MS", Take::kOptional, T::kSearchTimeOutOption},
    kJson,
};

constexpr ArgumentRow kFitArguments[] = {
    {"MARKS", "", Take::kRequired, T::kMarksFile},
    {"-o", "OUT.wlt", Take::kRequired, T::kFitOutput},
    kPanel,
    {"--photo", "WxH", Take::kOptional, T::kPhotoOption},
    {"--screen", "0..5|any", Take::kOptional, T::kScreenOption},
    {"--corners", "X,Y", Take::kLists, T::kCornersOption},
    {"--straight", "X,Y", Take::kLists, T::kStraightOption},
    {"--projection-h", "0|1", Take::kOptional, T::kProjectionHOption},
    {"--projection-v", "0|1", Take::kOptional, T::kProjectionVOption},
};

constexpr ArgumentRow kDoctorArguments[] = {
    kLans, kProjectors, kSerialPort, kUsbPort, kTimeOut, kRecord, kRedact, kJson,
};

constexpr Verb kVerbs[] = {
    {"registers", T::kVerbRegisters, kRegistersArguments, RunRegisters},
    {"profile", T::kVerbProfile, kProfileArguments, RunProfile},
    {"curve", T::kVerbCurve, kCurveArguments, RunCurve},
    {"frames", T::kVerbFrames, kFramesArguments, RunFrames},
    {"check", T::kVerbCheck, kCheckArguments, RunCheck},
    {"convert", T::kVerbConvert, kConvertArguments, RunConvert},
    {"apply", T::kVerbApply, kApplyArguments, RunApply},
    {"store", T::kVerbStore, kStoreArguments, RunStore},
    {"initialize", T::kVerbInitialize, kInitializeArguments, RunInitialize},
    {"mode", T::kVerbMode, kModeArguments, RunMode},
    {"verify", T::kVerbVerify, kVerifyArguments, RunVerify},
    {"preview", T::kVerbPreview, kPreviewArguments, RunPreview},
    {"picture", T::kVerbPicture, kPictureArguments, RunPicture},
    {"sheet", T::kVerbSheet, kSheetArguments, RunSheet},
    {"marks", T::kVerbMarks, kMarksArguments, RunMarks},
    {"search", T::kVerbSearch, kSearchArguments, RunSearch},
    {"fit", T::kVerbFit, kFitArguments, RunFit},
    {"doctor", T::kVerbDoctor, kDoctorArguments, RunDoctor},
};

}  // namespace

std::span<const Verb> Verbs() {
  return kVerbs;
}

}  // namespace warpline
