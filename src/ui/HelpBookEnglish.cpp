// The English help book; French and Swedish users read it too.
#include "ui/HelpBook.h"

using namespace HelpBook;

const QList<HelpSection> &HelpContent::english()
{
    static const QList<HelpSection> book{
        section("overview", "sparkles", "Overview",
                {
                    p("Sagwerk turns speech in audio and video files into text, right on your computer. Recognition "
                      "runs locally with whisper.cpp; your recordings and transcripts never leave the machine."),
                    p("Only when you explicitly start an **AI feature** – text refinement, or adding names to "
                      "detected speakers – is the text sent to the provider of the chosen AI model, Anthropic or "
                      "OpenAI. The audio file is never sent."),
                    h("What Sagwerk does"),
                    list({
                        "**Transcribe files**: audio and video, with a timestamp for every word.",
                        "**Record** from the microphone; the recording is transcribed right away.",
                        "**Interview**: transcribe while people talk – with speaker separation if you like.",
                        "**Podcast and audio links**: paste a link, and Sagwerk downloads and transcribes the file.",
                        "**Speaker detection** by voice; an AI model can add names and roles.",
                        "**AI text refinement** at three levels, from a gentle polish to a free rewrite.",
                        "**Playback with a word cursor**, and corrections by find and replace.",
                        "**Export** as text, subtitles (.srt), PDF and Word.",
                    }),
                }),
        section("start", "play.circle", "Getting Started",
                {
                    p("Your first transcript in three steps:"),
                    list({
                        "**Get a model**: open **Models & Settings** and download a speech model. **Small** is a "
                        "good start.",
                        "**Transcribe a file**: drag an audio or video file into the window, or choose **Open "
                        "File**. Check the model and language, then click **Start Transcription**.",
                        "**Several files**: drag several files into the window, or select them together in **Open "
                        "File**. Model, language and speaker detection apply to all of them; each file has a row with "
                        "its state and can be cancelled on its own. If one fails, the others go on.",
                        "**Record**: click **Record**, then **Start Recording**. **Stop & Transcribe** ends the "
                        "recording and starts the transcription.",
                    }),
                    p("Every result then appears in the **History** on the left and stays there until you delete "
                      "it."),
                    tip("Nothing recorded? Sagwerk records from your desktop's default input device (PipeWire or "
                        "PulseAudio). Check in the desktop's sound settings, or with `pavucontrol`, that the right "
                        "microphone is selected and not muted. If Sagwerk runs in a sandbox such as Flatpak, the "
                        "sandbox must allow microphone access."),
                }),
        section("models", "cpu", "Models & graphics card",
                {
                    p("Sagwerk recognises speech with Whisper models. Each is downloaded once from the public "
                      "whisper.cpp model repository and then lives in `~/.local/share/Sagwerk/models`."),
                    list({
                        "**Base** (57 MB): very fast, rough for German – fine for clear speech and for trying things "
                        "out.",
                        "**Small** (181 MB): the recommended default, a good balance of speed and accuracy.",
                        "**Medium** (514 MB): much more accurate, but needs more time and memory.",
                        "**Large v3 Turbo** (547 MB): the best quality; quick on fast machines, especially with a "
                        "graphics card.",
                    }),
                    p("The chosen model has a filled circle. Clicking an installed row chooses it; the trash can "
                      "deletes the model. If you delete the chosen one, the choice moves to the first installed "
                      "model."),
                    h("Graphics card (Vulkan)"),
                    p("Wherever Vulkan finds a graphics card, whisper.cpp recognises on it, which is several times "
                      "faster than on the processor. Without one, the processor does the work, with as many threads "
                      "as it has performance cores (two to eight). Nothing needs setting up: the driver of your "
                      "distribution (Mesa, or the vendor's own) is enough."),
                    tip("While a job runs, the badge between the two jars shows which one works: **GPU** with the "
                        "card's name, or **CPU** with the number of threads. Point at it for the full name."),
                }),
        section("languages", "globe", "Languages",
                {
                    p("Two languages matter, and they have nothing to do with each other:"),
                    list({
                        "**The language of the recording**: you choose it before transcribing, under **Language** "
                        "– German, English, French, Swedish or **Automatic**. The right fixed language usually gives "
                        "a slightly better result; **Automatic** detects it from the first seconds.",
                        "**The language of the interface**: you set it under **Models & Settings → App language** – "
                        "German, English, French, Swedish, or **System**, which follows your desktop's language "
                        "setting. The change applies at once, without a restart.",
                    }),
                    p("This help exists in German and English; with French or Swedish it is shown in English."),
                    p("AI refinement always stays in the language of the transcript and never translates."),
                }),
        section("transcribe", "waveform", "Transcribing",
                {
                    p("Sagwerk reads the common audio and video formats, for example m4a, mp3, wav, aac, aiff, flac, "
                      "ogg, opus, amr and caf, as well as mp4, m4v, mov, mkv, webm, avi, wmv, flv, mpg and 3gp. For "
                      "videos the soundtrack is transcribed; WhatsApp voice messages work too."),
                    p("While it works you see the progress in per cent, the elapsed time, and the load of the "
                      "processor cores and the graphics card. **Cancel** stops the transcription at once and leaves "
                      "nothing half-done behind."),
                    p("How long it takes depends on the model, the machine and the length: small models run much "
                      "faster than real time, large ones take noticeably longer."),
                    tip("Long silence or music can make recognition stall: the progress stands still for a while, or "
                        "a sentence repeats. Cut such stretches out first, or try a larger model."),
                }),
        section("playback", "play.rectangle", "Playback & Cursor",
                {
                    p("When a transcript has an audio file, a player bar sits above the text. While the audio plays, "
                      "the **word cursor** highlights the word being spoken and keeps it in view."),
                    list({
                        "**Play and pause** with the player bar.",
                        "**Jump**: clicking a word moves playback to that spot.",
                        "**Select**: when you drag across a passage, playback jumps to its start.",
                        "**Copy**: copy selected text with Ctrl+C, the whole text with **Copy** or Ctrl+Shift+C.",
                        "**Timestamps**: the switch shows or hides the time column to the left of the text.",
                        "**Space** plays and pauses, unless a text field has the focus.",
                        "**Find** with Ctrl+F: case and accents do not count. Enter or F3 goes to the next match, "
                        "Shift+Enter to the previous one, Alt+Enter plays from the match, Esc closes the search.",
                    }),
                    p("**Correct** turns a selection into a find-and-replace rule. Corrections never change the "
                      "original: they apply when the text is shown, copied and exported, and you can remove them "
                      "at any time."),
                }),
        section("speakers", "person.2.wave.2", "Speaker Detection",
                {
                    p("Sagwerk works out who speaks when in two stages:"),
                    list({
                        "**Acoustic**: a local model separates the voices and puts „Sprecher 1:“, „Sprecher 2:“ and "
                        "so on in front of each turn. This runs entirely on your computer.",
                        "**With AI**: when an API key is stored, the active AI model replaces the numbers with names "
                        "or roles – but only when the conversation makes them clear, for instance when someone "
                        "introduces themselves.",
                    }),
                    p("To rename a speaker, double-click its heading in the speaker view or use the context menu, "
                      "turning „Sprecher 1“ into “Diane Miller”, say. The name holds in every view, in copies and in "
                      "every export; Ctrl+Z takes it back."),
                    p("Without an API key, separation by voice works just the same; the speakers are then called "
                      "„Sprecher 1“, „Sprecher 2“ and so on, a label that stays German in every language. A "
                      "transcript without audio can only be split into speakers with AI."),
                    p("If you know the number of speakers – an interview usually has two – set it under **Number of "
                      "Speakers** before transcribing. It improves the separation a lot."),
                    tip("The first time, Sagwerk downloads the speaker separation models once, about 34 MB, into "
                        "`~/.local/share/Sagwerk/models`. After that no download is needed."),
                }),
        section("ai", "wand.and.stars", "AI Text Refinement",
                {
                    p("With an API key from Anthropic or OpenAI, Sagwerk refines the text at one of three levels:"),
                    list({
                        "**Level 1 · lightly smoothed**: fixes punctuation, capitalisation and recognition errors "
                        "and removes fillers such as “uh”. Meaning and order stay.",
                        "**Level 2 · revised**: thoroughly improves grammar, style and wording; the order of what was "
                        "said stays.",
                        "**Level 3 · completely new**: shapes a clearly structured text and may reorder, group and "
                        "summarise statements.",
                    }),
                    p("Each level appears as a view of its own beside the original, which stays unchanged. When the "
                      "text is split by speakers, the speaker labels are kept."),
                    p("Long transcripts are sent to the model piece by piece, split at sentence ends, and the answers "
                      "are joined again. That takes correspondingly longer."),
                    tip("The AI gets only the text, never the audio file – and only when you start a level."),
                }),
        section("export", "square.and.arrow.up", "Export & Share",
                {
                    p("Whatever is on show – the original, the speaker view or an AI level – can be passed on:"),
                    list({
                        "**Copy** puts the text on the clipboard, with your corrections and, when switched on, with "
                        "timestamps.",
                        "**Text file (.txt)** saves the same text as a UTF-8 file.",
                        "**Subtitles (.srt)** and **(.vtt)** save the timed stretches as subtitles, with your "
                        "corrections; WebVTT names the speakers, and so does SubRip from the speaker view.",
                        "**JSON (.json)** saves the whole transcript for other programs: stretches, words with their "
                        "times, speakers, language, model and corrections.",
                        "**PDF** and **Word (.docx)** save the text with the file name as its title.",
                        "The last entry of the **Export** menu shows the transcript's folder in the file manager.",
                    }),
                    p("The suggested file name names the view: “-sprecher” for the speaker view, “-stufe2” for the "
                      "second AI level."),
                }),
        section("storage", "folder", "Recordings & Storage",
                {
                    p("Each transcription is a folder of its own, a **bundle**. It holds the file `sagwerk.json` with "
                      "the text, timings, speaker text, AI levels and corrections, and a copy of the audio file."),
                    p("All bundles live in `~/.local/share/Sagwerk/Aufnahmen`, the models in "
                      "`~/.local/share/Sagwerk/models`. When `XDG_DATA_HOME` is set, the `Sagwerk` folder is there "
                      "instead."),
                    p("To rename an entry in the **History**, press F2 or use its context menu."),
                    p("To delete an entry, right-click it in the **History** and choose **Delete** – this happens "
                      "without asking. Or open the entry and click **Delete** in the toolbar; then Sagwerk asks "
                      "first. The whole bundle goes, audio included."),
                    tip("To back up your transcripts, copying the folder `~/.local/share/Sagwerk/Aufnahmen` is "
                        "enough."),
                }),
        section("settings", "gearshape", "Settings",
                {
                    p("Besides the speech models, **Models & Settings** holds:"),
                    list({
                        "**API key**: one field each for Anthropic and OpenAI. **Save** stores a newly entered key, "
                        "**Remove** deletes the stored one at once. A stored key is never shown, only marked as "
                        "“stored”.",
                        "**Active model**: the AI model for refinement and speaker names. When its provider's key is "
                        "missing, an orange note says so.",
                        "**App language**: the language of the interface; it switches at once.",
                    }),
                    p("Under **Beta features** you can switch on live speaker detection for interviews. Everything "
                      "but the keys applies at once, without **Save**; the settings are kept in "
                      "`~/.config/Morvane/Sagwerk.conf`."),
                }),
        section("privacy", "lock.shield", "Privacy",
                {
                    p("Sagwerk is built so that your recordings stay with you."),
                    list({
                        "**On your computer**: recognition, playback, speaker separation, corrections and export. "
                        "Audio, transcripts and settings stay on your disk.",
                        "**To the AI**: only when you start an AI level or speaker naming is the text sent to the "
                        "provider of the active model, Anthropic or OpenAI – never the audio file.",
                        "**From the network**: otherwise Sagwerk uses the network only to download speech and "
                        "speaker models, and to resolve and download podcast or audio links.",
                        "**Your keys** are kept in your desktop's keyring (the Secret Service, such as GNOME "
                        "Keyring or KWallet) – not in settings files, and never in a log.",
                    }),
                    tip("Without an API key, no text leaves your computer."),
                }),
        section("distribute", "shippingbox", "Sharing the App",
                {
                    p("Sagwerk is built for Linux on 64-bit processors: x86-64 and ARM64. It needs a distribution "
                      "that packages whisper.cpp, such as Debian testing or Ubuntu 26.04 and later."),
                    p("Sagwerk is passed on as source code: `scripts/run` builds and starts the app, `scripts/test` "
                      "builds it and checks it with the test suite. When packages are missing, the scripts set up a "
                      "suitable Debian environment by themselves."),
                    p("To pass on transcripts, export them or copy a bundle from `~/.local/share/Sagwerk/Aufnahmen`. "
                      "Every computer downloads its models itself."),
                    tip("When you store an API key for the first time, the desktop may ask whether to create or "
                        "unlock a keyring. That is the Secret Service's normal prompt: confirm it with your password, "
                        "or Sagwerk cannot keep the key."),
                }),
        section("trouble", "exclamationmark.triangle", "Troubleshooting",
                {
                    list({
                        "**Format not supported**: the file has no readable soundtrack, or an unusual format. Convert "
                        "it, for example with `ffmpeg -i input.xyz output.wav`, and try again.",
                        "**Transcription stalls**: long silence or music slows recognition down. Cancel, cut the "
                        "stretch out, or use a larger model.",
                        "**AI error 401**: the API key is invalid or has expired. Enter a new one under **Models & "
                        "Settings**.",
                        "**AI error 429**: too many requests in a short time, or your quota with the provider is used "
                        "up. Wait a moment and try again.",
                        "**Speaker line without a time**: when the AI has reworded a line heavily, Sagwerk cannot find "
                        "it in the recording. The line stays in the text, just without a timestamp or a jump.",
                        "**No model installed**: nothing can be transcribed without a speech model. Download one "
                        "under **Models & Settings**.",
                    }),
                }),
        section("about", "info.circle", "About Morvane",
                {
                    p("Sagwerk is made by **Morvane**."),
                    p("It stands on the shoulders of free software:"),
                    list({
                        "**whisper.cpp** with ggml recognises the speech.",
                        "**sherpa-onnx** separates the speakers.",
                        "**FFmpeg** reads audio and video.",
                        "**Qt** draws the interface, and **QtKeychain** talks to the keyring.",
                    }),
                    p("Thanks to everyone who maintains these projects."),
                }),
    };
    return book;
}
