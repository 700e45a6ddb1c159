#!/usr/bin/env python3
"""Makes the sound that confirms a new key: three soft notes, rising. Gives the same bytes always."""

import math
import struct
import wave
from pathlib import Path

RATE = 44100
LENGTH = 0.9
PEAK = 0.5
FADE_IN = 0.012
FADE_OUT = 0.12
DECAY = 0.22

# When each note starts, in seconds, and its pitch, in hertz: C, E and G.
NOTES = ((0.00, 523.25), (0.13, 659.26), (0.26, 783.99))
# The strength of each overtone, the ground tone first.
OVERTONES = (1.0, 0.22, 0.06)


def note(pitch, time):
    """One note, `time` seconds after its start: a quick soft rise, then dying away."""
    if time < 0:
        return 0.0
    loudness = min(time / FADE_IN, 1.0) * math.exp(-time / DECAY)
    tones = (
        strength * math.sin(2 * math.pi * pitch * number * time)
        for number, strength in enumerate(OVERTONES, start=1)
    )
    return loudness * sum(tones)


def sound():
    """All samples, between -PEAK and PEAK."""
    count = round(RATE * LENGTH)
    samples = []
    for index in range(count):
        time = index / RATE
        fade = min((count - 1 - index) / (RATE * FADE_OUT), 1.0)
        samples.append(fade * sum(note(pitch, time - start) for start, pitch in NOTES))
    loudest = max(map(abs, samples))
    return [sample * PEAK / loudest for sample in samples]


def main():
    file = Path(__file__).resolve().parent.parent / "snd" / "168.wav"
    file.parent.mkdir(exist_ok=True)
    samples = [round(32767 * sample) for sample in sound()]
    with wave.open(str(file), "wb") as out:
        out.setnchannels(1)
        out.setsampwidth(2)
        out.setframerate(RATE)
        out.writeframes(struct.pack(f"<{len(samples)}h", *samples))


if __name__ == "__main__":
    main()
