<!DOCTYPE html>
<!-- SPDX-License-Identifier: GPL-3.0-or-later -->
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Kivandra: support</title>
<link rel="stylesheet" href="/site.css">
</head>
<body>
<main class="page">
<p class="trail"><a href="/index.html"><img src="/img/kiv-mark.svg" alt="">Home</a></p>
<section class="hero"><img src="/img/kiv.svg" alt="Kiv, the smiling seed">
<div><h1>Something does not work?</h1>
<p>Most things have a small reason. Look here first, best together with a grown-up.</p></div></section>

<section class="cards even">
<div class="card"><h2>No page opens at all</h2>
<p>Look whether the computer is connected to the internet, then press Refresh. Without a connection Kivandra beeps too: a page that it cannot read is stopped.</p></div>
<div class="card"><h2>One page stays away</h2>
<p>Is every letter of the address right? If Kivandra beeped, the filter stopped it: a grown-up can let it through with Lock.</p><a class="more" href="/help/blocked.html">More about stopped pages</a></div>
<div class="card"><h2>A link does nothing</h2>
<p>Perhaps it wants to open a new window, and pop-ups are switched off in the Parental Options Menu. Or it is a link for writing mail: these can be switched off there too.</p></div>
<div class="card"><h2>It is too quiet</h2>
<p>Look at Volume under Tools. The sounds of the program can also be switched off in the Parental Options Menu. The beep of the filter always sounds.</p></div>
<div class="card"><h2>Pictures are missing</h2>
<p>In the menu View, “Enable / Disable Browser Images” brings them back.</p></div>
<div class="card"><h2>The side pictures are gone</h2>
<p>Open any window first. Then, in the menu View, “Side Toolbar” brings them back.</p></div>
<div class="card"><h2>An allowed address is still stopped</h2>
<p>An entry of the allowed list counts from the next start of the program. Until then it is refused. Lock helps at once.</p></div>
<div class="card sun"><h2><img src="/img/key.svg" alt="">The password is forgotten</h2>
<p>The program knows no second password. Whoever looks after this computer has to help.</p></div>
</section>
<p class="foot"><a href="/help/">How to use Kivandra</a><a href="/tips/default.htm">Tips</a><a href="/support.asp">Support</a></p>
</main>
</body>
</html>
