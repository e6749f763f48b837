// The drawings of the causes page, in the colours of the program's main screen.
#pragma once

#include <string_view>

namespace quillon {

/// The evening behind the sign: the sun, the hills, a signal box.
inline constexpr std::string_view kDusk =
    R"svg(<svg class="dusk" viewBox="0 0 1200 200" preserveAspectRatio="xMaxYMax slice" aria-hidden="true">
<defs><radialGradient id="sun"><stop stop-color="#FFF6CF"/><stop offset=".2" stop-color="#FFE9A6" stop-opacity=".7"/><stop offset="1" stop-color="#FFB060" stop-opacity="0"/></radialGradient></defs>
<circle cx="1108" cy="116" r="120" fill="url(#sun)"/><circle cx="1108" cy="116" r="17" fill="#FFF6CF"/>
<path d="M0 160Q120 112 250 150T520 148T760 138T1000 128T1200 152V200H0z" fill="#A0607C"/>
<path d="M0 176Q160 146 330 168T640 166T930 158T1200 172V200H0z" fill="#6E4468"/>
<path d="M0 184q20-8 40 0t40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0 40 0V200H0z" fill="#3B2A4C"/>
<g transform="translate(-150)"><path d="M236 140h72v46h-72z" fill="#6A3A3C"/><path d="M230 116h84v26h-84z" fill="#3B2A3C"/>
<path d="M234 119h14v18h-14zm17 0h14v18h-14zm17 0h14v18h-14zm17 0h14v18h-14zm17 0h8v18h-8z" fill="#FFD98A"/>
<path d="M224 117l18-20h60l18 20z" fill="#2A2350"/><path d="M288 84h9v16h-9z" fill="#5A3036"/></g>
</svg>
)svg";

/// The signal beside the sign, and the station's cat; the class of the header moves the arm.
inline constexpr std::string_view kSignal =
    R"svg(<svg class="signal" viewBox="0 0 100 150" aria-hidden="true">
<defs><radialGradient id="glow"><stop stop-color="#FFF"/><stop offset=".22" stop-color="currentColor" stop-opacity=".9"/><stop offset="1" stop-color="currentColor" stop-opacity="0"/></radialGradient></defs>
<path d="M47 16h6v134h-6zM45 16h10l-5-12z" fill="#241F3D"/><path d="M47 16h1.6v134h-1.6z" fill="#8A5A60"/>
<path d="M44.5 150V44M55.5 150V44M44.5 56h11M44.5 68h11M44.5 80h11M44.5 92h11M44.5 104h11M44.5 116h11M44.5 128h11M44.5 140h11" fill="none" stroke="#241F3D" stroke-width="1.3"/>
<g class="arm"><path d="M44 29H8v11h36z" fill="#D23A2E"/><path d="M14 29h6v11h-6z" fill="#FFF9D5"/><path d="M42 29.5h12v10h-12z" fill="#241F3D"/></g>
<g><circle cx="60" cy="36" r="22" fill="url(#glow)"/><circle cx="60" cy="36" r="4" fill="#FFF"/></g>
<g transform="translate(-589 -485) scale(1.52)"><path d="M436,417c-5,-1 -9,-5 -9,-10c0,-5 2,-8 3,-11l-.6,-5.4 3.2,2.6h4l3,-2.6 -.2,5.6c2.4,3.6 3.6,8 3,13c4,1 7,-1 7,-6c0,-3 2.6,-3.6 3.2,-1c.8,6 -3,12 -9,12.4z" fill="#2A2233"/>
<path d="M429.8,396l-.5,-5.2 1.4,1.2M439.2,397c2.6,3.6 3.4,8 3,12" fill="none" stroke="#F0A868" stroke-width=".8" stroke-linecap="round"/>
<circle cx="432" cy="398" r=".8" fill="#FFD84A"/><circle cx="436.4" cy="398" r=".8" fill="#FFD84A"/></g>
</svg>
)svg";

/// The cat asleep on a suitcase: there is nothing to do.
inline constexpr std::string_view kAsleep = R"svg(<svg viewBox="64 292 100 80" aria-hidden="true">
<defs><linearGradient id="evening" x2="0" y2="1"><stop stop-color="#2B2F78"/><stop offset=".5" stop-color="#BB6B80"/><stop offset="1" stop-color="#FFCE82"/></linearGradient></defs>
<rect x="65" y="293" width="98" height="78" rx="5" fill="url(#evening)" stroke="#B8892B" stroke-width="2"/><path d="M66 366h96v2q0 2-2 2H68q-2 0-2-2z" fill="#4B3A44"/>
<path d="M80,337q-4,-22 22,-24q30,-2 36,16q2,6 -2,8z" fill="#2A2233"/>
<path d="M82,337q-2,-4 2,-8.4q6,-5 14,-2.6q4,-5.4 5,-.4q5,1.8 5.6,6.6q-.4,4.8 -6,4.8zM83.6,330l-1.8,-7.6 6.6,3.8zM96,326l5.4,-5.8 1.6,8zM138,336q3,-6 -4,-6.6q-12,-.6 -22,5.2q-3,2 -.6,2.400z" fill="#43374F"/>
<path d="M87.4,332.400q2,1.8 4,0M95,332.600q2,1.8 4,0M91,318q18,-8 34,-1q9,4 11.6,11" fill="none" stroke="#F0A868" stroke-width=".9" stroke-linecap="round"/>
<path d="M142,310h4l-4,4.600h4M149,301h5.400l-5.4,6h5.4" fill="none" stroke="#FFF3C4" stroke-width="1.3" stroke-linecap="round" stroke-linejoin="round"/>
<path d="M78,337h70v30h-70z" fill="#8A4434"/><path d="M78,337h70v2h-70z" fill="#C07A58"/><path d="M90,337h7v30h-7zM129,337h7v30h-7z" fill="#5E2A24"/>
<path d="M108,347h10v7h-10z" fill="#C9A24A"/></svg>
)svg";

}  // namespace quillon
