// The look of the causes page: the enamel sign, the black board and the cream plates of the program's
// screens.
#pragma once

#include <string_view>

namespace quillon {

/// What stands before the style. The policy is a second lock: were a name not escaped, it still could not
/// act.
inline constexpr std::string_view kCausesHead = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'">
<title>What holds the trains up - Quillon</title>
)";

inline constexpr std::string_view kCausesStyle = R"css(
:root { color-scheme: light dark;
  --paper: #EEE8C4; --plate: #FFFEF4; --inset: #FFF9D5; --line: #D8CFA0; --brass: #B8892B; --rivet: #8A6A1E;
  --ink: #141450; --title: #000080; --quiet: #574D2C; --stop: #A81414; --focus: #000080;
  --coach: #000080; --window: #FFE9A6; --rail: #4B3A44; --sleeper: #A58F63; }
/* Only on screens: paper stays white. */
@media screen and (prefers-color-scheme: dark) { :root {
  --paper: #0A0A26; --plate: #15153F; --inset: #1E1E50; --line: #3B3B78; --brass: #A67C28; --rivet: #C9A24A;
  --ink: #F1EACB; --title: #FFE9A6; --quiet: #C3BB98; --stop: #FF9A8E; --focus: #FFE08A;
  --coach: #5A63D8; --window: #FFE9A6; --rail: #8F86A8; --sleeper: #4B4668; } }
*, ::before, ::after { box-sizing: border-box; }
html { -webkit-text-size-adjust: 100%; text-size-adjust: 100%; }
body { margin: 0; color: var(--ink); background: var(--paper); line-height: 1.5; overflow-wrap: anywhere;
  font-family: 'DejaVu Sans', Verdana, Tahoma, sans-serif; }
.page { max-width: 880px; margin: 0 auto; padding: 0 16px; }
h1, h2, h3, p, ul, ol, dl, dd { margin: 0; padding: 0; }
ul, ol { list-style: none; }
a { color: var(--title); }
:focus-visible { outline: 3px solid var(--focus); outline-offset: 2px; border-radius: 3px; }
code { font-family: 'DejaVu Sans Mono', Consolas, monospace; font-size: .86em; }
/* Names may be written from right to left; what follows them is not. */
b, code, li { unicode-bidi: isolate; }

/* The station: an awning, the evening sky, and the sign that hangs there. */
.station { position: relative; overflow: hidden; border-bottom: 4px solid #0B0B33;
  background: linear-gradient(#141A58, #2B2F78 26%, #6A4D8C 52%, #BB6B80 72%, #EE9460 88%, #FFCE82); }
.station::before { content: ''; position: absolute; z-index: 2; inset: 0 0 auto; height: 30px;
  background: radial-gradient(circle at 9px 0, #FFF4CC 8px, #000080 8px 9.2px, transparent 9.8px) 0 20px / 18px 10px repeat-x,
    linear-gradient(#2C1D30 5px, #000080 5px 9px, #C9A24A 9px 10px, #FFF4CC 10px, #E9D6A4) 0 0 / 100% 20px no-repeat; }
.dusk { position: absolute; inset: auto 0 0; width: 100%; height: 100%; }
.station .page { position: relative; display: flex; align-items: flex-end; gap: 16px; min-height: 196px; }
h1 { position: relative; margin: 62px auto 52px; padding: 12px 26px; color: #FFF9D5; font-size: clamp(20px, 5.4vw, 32px);
  line-height: 1.2; text-align: center; letter-spacing: .5px; border: 3px solid #C9A24A; border-radius: 5px;
  background: radial-gradient(circle, #F2DC9A 1.8px, transparent 2.4px) left center / 20px 8px no-repeat,
    radial-gradient(circle, #F2DC9A 1.8px, transparent 2.4px) right center / 20px 8px no-repeat,
    linear-gradient(#1A1A92, #000080 50%, #000058);
  box-shadow: inset 0 0 0 2px #000058, inset 0 0 0 3px #4A4AC0, 0 3px 8px #0006; }
h1::before { content: ''; position: absolute; inset: -60px 18% auto; height: 57px; border: solid #241F3D; border-width: 0 3px; }
.signal { flex: none; width: clamp(74px, 20vw, 104px); height: auto; margin: 32px 0 22px; color: #FF5A48; }
.go .signal { color: #5DFFA0; }
.caution .signal { color: #FFC23E; }
.arm { transform-origin: 44px 34px; }
.go .arm { transform: rotate(84deg); }
.caution .arm { transform: rotate(42deg); }
@media (prefers-reduced-motion: no-preference) {
  .arm { animation: fall .9s cubic-bezier(.3, 1.5, .6, 1); }
  @keyframes fall { from { transform: rotate(0deg); } } }

/* The departure board. */
.board { position: relative; margin: -26px auto 0; padding: 16px 20px 14px; color: #FFF3C4; border: 3px solid #C9A24A;
  border-radius: 6px; background: repeating-linear-gradient(#101014 0 3px, #16161C 3px 4px);
  box-shadow: 0 0 0 3px #0B0B48, 0 4px 12px #0007; }
.board .lead { font-size: clamp(18px, 4.6vw, 24px); font-weight: bold; line-height: 1.3; color: #FFE9A6; }
.board dl { margin: 10px 0 8px; }
.board dl div { display: grid; grid-template-columns: 1fr 1fr 1fr; align-items: center; gap: 2px 12px; padding: 6px 0;
  border-top: 1px solid #3A3622; }
.board dt { letter-spacing: .5px; }
.board dd { display: flex; align-items: center; gap: 9px; color: #CFC7A4; }
.board dd b { color: #FFF9D5; font-size: 1.1em; }
.board dd::before { content: ''; flex: none; width: 12px; height: 12px; border-radius: 50%; background: var(--lit);
  box-shadow: 0 0 0 2px #3A3A44, 0 0 9px 1px var(--lit); }
.board .go { --lit: #3DE07F; }
.board .caution { --lit: #FFB52E; }
.board .stop { --lit: #FF4D3D; }
.board .off::before { background: #2A2A30; box-shadow: 0 0 0 2px #3A3A44; }
.board .made { font-size: .86em; color: #CFC7A4; border-top: 1px solid #3A3622; padding-top: 8px; }
.notice { margin: 22px 0 0; padding: 12px 16px; border: 2px solid #B8892B; border-left: 12px solid #E0A020;
  border-radius: 4px; background: var(--inset); }
nav ul { display: flex; flex-wrap: wrap; gap: 8px; margin-top: 22px; }
nav a { display: block; padding: 8px 11px; color: #FFF9D5; font-weight: bold; text-decoration: none; font-size: .86em;
  border: 2px solid #C9A24A; border-radius: 5px; background: linear-gradient(#1A1A92, #000080 50%, #000058); }
nav a:hover { background: #2A2AB8; }

h2 { margin: 34px 0 14px; padding: 9px 14px; color: #FFF9D5; font-size: 1.15em; line-height: 1.3; background: #000080;
  border: 2px solid #B8892B; border-radius: 3px; }
.hint { margin: -4px 2px 12px; color: var(--quiet); }

/* A plate: cream enamel, a brass rim, a rivet in each corner. */
.plate { position: relative; margin: 0 0 18px; padding: 20px 22px; border: 2px solid var(--brass); border-radius: 6px;
  background: radial-gradient(circle at 3px 3px, var(--rivet) 2px, transparent 2.6px) 5px 5px / 6px 6px no-repeat,
    radial-gradient(circle at 3px 3px, var(--rivet) 2px, transparent 2.6px) calc(100% - 5px) 5px / 6px 6px no-repeat,
    radial-gradient(circle at 3px 3px, var(--rivet) 2px, transparent 2.6px) 5px calc(100% - 5px) / 6px 6px no-repeat,
    radial-gradient(circle at 3px 3px, var(--rivet) 2px, transparent 2.6px) calc(100% - 5px) calc(100% - 5px) / 6px 6px no-repeat,
    var(--plate);
  box-shadow: 0 1px 4px #0003; }
.plate > * + * { margin-top: 12px; }

/* A cause, numbered like a platform. */
.causes { counter-reset: platform; }
.cause { counter-increment: platform; padding-left: 80px; }
.cause::before { content: counter(platform); position: absolute; left: 20px; top: 20px; min-width: 44px; padding: 0 5px;
  color: #FFF9D5; background: #000080; border: 2px solid #C9A24A; border-radius: 4px; font-weight: bold;
  font-size: 1.15em; line-height: 36px; text-align: center; }
.kind { color: var(--quiet); font-size: .74em; font-weight: bold; letter-spacing: 1.2px; text-transform: uppercase; line-height: 1.3; }
.cause h3 { margin-top: 2px; font-size: 1em; font-weight: normal; line-height: 1.45; }
.cause h3 b:first-child, .cause h3 .name { color: var(--title); font-size: 1.3em; }
.advice { padding-left: 12px; border-left: 4px solid var(--brass); }

/* What it heals: a train upon its track, as long as its share. */
.heals { display: grid; grid-template-columns: repeat(auto-fill, minmax(min(100%, 240px), 1fr)); gap: 8px 22px; }
.heals li { font-size: .84em; color: var(--quiet); }
.track { display: block; height: 24px; margin-bottom: 2px;
  background: linear-gradient(var(--rail), var(--rail)) 0 18px / 100% 2px no-repeat,
    repeating-linear-gradient(90deg, transparent 0 3px, var(--sleeper) 3px 8px, transparent 8px 11px) 0 20px / 100% 4px no-repeat; }
/* Coaches shrink or stretch a little, so that there are only whole ones. */
.train { display: block; height: 18px; min-width: 22px; border-radius: 3px 9px 0 0;
  background: linear-gradient(90deg, transparent 12%, var(--window) 12% 25%, transparent 25% 33%, var(--window) 33% 46%,
      transparent 46% 54%, var(--window) 54% 67%, transparent 67% 75%, var(--window) 75% 88%, transparent 88%) 0 3px / 40px 5px,
    linear-gradient(90deg, transparent 3%, #C9A24A 3% 97%, transparent 97%) 0 10px / 40px 1px,
    linear-gradient(90deg, transparent 3%, var(--coach) 3% 97%, transparent 97%) 0 0 / 40px 14px,
    radial-gradient(circle at 22% 1px, var(--rail) 3px, transparent 3.4px) 0 14px / 40px 4px,
    radial-gradient(circle at 78% 1px, var(--rail) 3px, transparent 3.4px) 0 14px / 40px 4px;
  background-repeat: round no-repeat; }

.files { display: flex; flex-wrap: wrap; gap: 5px 6px; align-items: baseline; }
.files li { padding: 1px 8px; background: var(--inset); border: 1px solid var(--line); border-radius: 3px; font-size: .86em; }
.files .label { padding: 0; background: none; border: none; color: var(--quiet); }
.mend { padding: 8px 12px; background: var(--inset); border: 1px dashed var(--brass); border-radius: 4px; font-size: .9em; }
.mend p::before { content: ''; display: inline-block; width: 11px; height: 11px; margin-right: 9px; border-radius: 50%;
  background: radial-gradient(circle at 35% 30%, #B6FFD0, #17A64C 60%, #0B6429); box-shadow: 0 0 0 2px #C9A24A; }
.mend li { margin-top: 4px; }

details { border: solid var(--line); border-width: 1px 0; }
.plate > details + details { margin-top: -1px; }
summary { padding: 7px 2px; cursor: pointer; color: var(--title); font-weight: bold; font-size: .92em; }
summary:hover { background: var(--inset); }
.names { columns: 15em; column-gap: 24px; padding: 2px 4px 12px 18px; font-size: .86em; }
.names li { break-inside: avoid; padding: 1px 0; }

/* Signal lamps: the upper one is red, the lower one green, so that the place tells as much as the colour. */
.lamps { padding: 2px 0 10px; }
.lamps > li { position: relative; padding: 5px 0 5px 32px; }
.lamps > li + li { margin-top: 4px; }
.lamps > li::before, .route h3::before { content: ''; position: absolute; left: 2px; top: 5px; width: 16px; height: 28px; border-radius: 8px;
  background: radial-gradient(circle at 8px 8px, var(--upper, #4A2020) 4px, transparent 4.8px),
    radial-gradient(circle at 8px 20px, var(--lower, #16391F) 4px, transparent 4.8px), #17131D;
  box-shadow: 0 0 0 1px #6A5A6A; }
.lamps.stop, h3.stop { --upper: #FF5442; }
.lamps.go, h3.go { --lower: #3DE07F; }
h3.caution { --upper: #FFB52E; }
.lamps b { color: var(--title); }
.lamps small { color: var(--quiet); font-size: .82em; }
.route h3 { position: relative; padding-left: 34px; min-height: 30px; color: var(--title); font-size: 1.2em; line-height: 1.35; }
.route h3::before { left: 2px; top: 0; }
.route h3 span { display: block; color: var(--quiet); font-size: .74em; font-weight: normal; }
.route { scroll-margin-top: 12px; }
.route:target { box-shadow: 0 0 0 3px var(--focus); }
/* The chain is a line with its stops; the last one is the terminus. */
.chain { margin: 0 0 4px 5px; font-size: .9em; }
.chain li { position: relative; padding: 3px 0 3px 21px; }
.chain li::before { content: ''; position: absolute; left: 4px; top: 0; width: 3px; height: 100%; background: var(--stop); }
.chain li:last-child::before { height: 1em; }
.chain li::after { content: ''; position: absolute; left: 0; top: .6em; width: 11px; height: 11px; border-radius: 50%;
  background: var(--plate); border: 3px solid var(--stop); }

.calm { display: flex; flex-wrap: wrap; align-items: center; gap: 8px 22px; }
.calm svg { flex: none; width: 132px; height: auto; }
.calm p { flex: 1 1 200px; margin: 0; font-size: 1.1em; color: var(--title); }
footer.page { margin: 34px auto 0; padding: 18px 16px 28px; text-align: center; font-size: .78em; color: var(--quiet);
  border-top: 1px solid var(--line); }

@media (max-width: 560px) {
  .board { padding: 12px 14px; }
  .board dl div { grid-template-columns: 4fr 5fr; }
  .board dd { font-size: .93em; }
  .board dt { grid-column: 1 / -1; }
  .plate { padding: 16px 14px; }
  .cause .kind { min-height: 40px; padding-left: 52px; display: flex; align-items: center; }
  .cause::before { left: 14px; top: 14px; }
  h1 { padding: 10px 20px; } }

@media print {
  @page { margin: 14mm; }
  :root { --paper: #FFF; --plate: #FFF; --inset: #FFF; --ink: #000; --quiet: #444; }
  body { font-size: 10pt; line-height: 1.4; }
  .page { max-width: none; padding: 0; }
  .dusk, .signal, .station::before, h1::before, nav { display: none; }
  .station { background: none; border: none; }
  .station .page { min-height: 0; }
  h1, h2, .cause::before { color: #000080; background: none; box-shadow: none; }
  h1 { margin: 0 0 5mm; padding: 0; border: none; font-size: 20pt; text-align: left; }
  h2 { margin-top: 6mm; border-width: 0 0 2px; padding: 0 0 3px; break-after: avoid; }
  .hint, h3, summary { break-after: avoid; }
  .board, .board .lead, .board dd, .board dd b, .board .made { margin-top: 0; color: #000; background: none; box-shadow: none; }
  .board dl div, .board .made { border-color: #B8B8B8; }
  .plate { padding: 10px 14px; margin-bottom: 10px; background: none; box-shadow: none; break-inside: avoid; }
  .plate > * + * { margin-top: 7px; }
  .cause { padding-left: 72px; }
  .cause::before { left: 14px; top: 12px; }
  .route, #changes ~ .plate { break-inside: auto; }
  .lamps > li { break-inside: avoid; padding-block: 2px; }
  /* Ink instead of light: red is full, green is a ring. */
  .board dd::before, .lamps > li::before, .route h3::before { top: 6px; width: 11px; height: 11px; border-radius: 50%;
    border: 3px solid var(--dot); background: var(--dot); box-shadow: none; }
  .go { --dot: #0B6429; }
  .caution { --dot: #D08A00; }
  .stop { --dot: #A81414; }
  .off { --dot: #C8C8C8; }
  .board .go::before, .board .off::before, .lamps.go > li::before, h3.go::before { background: #FFF !important; }
  .lamps.go { columns: 2; }
  .board dd::before, .lamps > li::before, .route h3::before, .track, .train, .mend p::before, .chain li::before, .chain li::after {
    print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  summary { list-style: none; padding: 3px 2px; }
  summary::-webkit-details-marker { display: none; }
  /* Nobody can unfold paper; running text keeps what is unfolded short. */
  details::details-content { content-visibility: visible; height: auto; }
  .names { columns: auto; padding: 0 2px 5px; font-size: 8pt; }
  .names li { display: inline; }
  .names li:not(:last-child)::after { content: ' \B7  '; color: #777; }
  footer.page { margin-top: 4mm; padding: 2mm; } }
)css";

}  // namespace quillon
