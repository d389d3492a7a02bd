// The tests' functions; check_table.cpp says what each is for.
#pragma once

namespace krv::tool {

class Bench;

void CheckLoad(Bench& bench);
void CheckStartupInfo(Bench& bench);
void CheckStartupNullArguments(Bench& bench);
void CheckShutdown(Bench& bench);
void CheckStartupAgain(Bench& bench);
void CheckMissingSuites(Bench& bench);
void CheckDevices(Bench& bench);
void CheckAnnouncements(Bench& bench);
void CheckIndices(Bench& bench);
void CheckRegistrationNullArguments(Bench& bench);
void CheckBadPaths(Bench& bench);
void CheckRegistrationAgain(Bench& bench);
void CheckUnknownNames(Bench& bench);
void CheckDeviceKinds(Bench& bench);
void CheckCreationNullArguments(Bench& bench);
void CheckShortLives(Bench& bench);
void CheckFrameBeforeInitialise(Bench& bench);
void CheckFrameAfterRelease(Bench& bench);
void CheckRepeatedCalls(Bench& bench);
void CheckFrameWithoutClear(Bench& bench);
void CheckParametersBeforeInitialise(Bench& bench);
void CheckReservedSlots(Bench& bench);
void CheckLivesWithoutRelease(Bench& bench);
void CheckNullSlotArguments(Bench& bench);
void CheckFirstFrame(Bench& bench);
void CheckEveryEffect(Bench& bench);
void CheckSizes(Bench& bench);
void CheckLargeSizes(Bench& bench);
void CheckSizesBeyondOpenGl(Bench& bench);
void CheckPixelTypes(Bench& bench);
void CheckStrides(Bench& bench);
void CheckChangingSizes(Bench& bench);
void CheckOtherInputSizes(Bench& bench);
void CheckTextures(Bench& bench);
void CheckFramesInPlace(Bench& bench);
void CheckFrameOrder(Bench& bench);
void CheckFramesWithoutBuffer(Bench& bench);
void CheckOddDescriptions(Bench& bench);
void CheckSound(Bench& bench);
void CheckFrameIndices(Bench& bench);
void CheckFrameRates(Bench& bench);
void CheckPersonMasks(Bench& bench);
void CheckParameterLimits(Bench& bench);
void CheckParametersOutside(Bench& bench);
void CheckParameterKinds(Bench& bench);
void CheckParameterTexts(Bench& bench);
void CheckParameterRefusals(Bench& bench);
void CheckUniforms(Bench& bench);
void CheckInterleavedInstances(Bench& bench);
void CheckTwoContexts(Bench& bench);
void CheckUniformsDuringFrames(Bench& bench);
void CheckInstancesOfAnotherThread(Bench& bench);
void CheckNoContext(Bench& bench);
void CheckLostContext(Bench& bench);
void CheckContextLostBetweenLives(Bench& bench);
void CheckManyFrames(Bench& bench);
void CheckFullLives(Bench& bench);
void CheckFailedLives(Bench& bench);
void CheckOddDescriptionsOfPackages(Bench& bench);
void CheckTruncatedDescriptions(Bench& bench);
void CheckFlippedDescriptions(Bench& bench);
void CheckTruncatedShaders(Bench& bench);
void CheckFlippedShaders(Bench& bench);

}  // namespace krv::tool
