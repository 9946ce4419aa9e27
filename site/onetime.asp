<!DOCTYPE html>
<!-- SPDX-License-Identifier: GPL-3.0-or-later -->
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>Welcome to Kivandra</title>
<link rel="stylesheet" href="/site.css">
</head>
<body>
<main class="page">
<section class="hero"><img src="/img/kiv-wave.svg" alt="Kiv, the smiling seed">
<div><h1>Welcome to Kivandra!</h1>
<p>I am Kiv. This is your own window to the web, and I am glad that you are here.</p></div></section>

<section class="cards even">
<div class="card"><h2>For you</h2>
<ul>
<li>Type a question in the long box at the top and press <kbd>Enter</kbd>.</li>
<li>The four pictures on the home page take you to good pages about school things.</li>
<li>The little house brings you home again.</li>
</ul>
<a class="more" href="/">Let’s start</a></div>
<div class="card sun"><h2><img src="/img/key.svg" alt="">For the grown-up</h2>
<ul>
<li>Your password opens the Parental Options Menu, in the menu Tools. Write it down and keep it safe: there is no second one.</li>
<li>The filter is on. It looks at every page before the page is shown.</li>
<li>There you also choose the home page, the words and addresses to refuse or allow, and whether visited pages are recorded.</li>
</ul>
</div>
<div class="card wide"><h2><img src="/img/shield.svg" alt="">What the filter cannot do</h2>
<p>It reads words. It does not see what is in a picture or a film, and it does not read what a page writes later on. No filter replaces you: sit beside your child now and then.</p><a class="more" href="/help/parents.html">More for grown-ups</a></div>
</section>
<p class="foot"><a href="/help/">How to use Kivandra</a><a href="/tips/default.htm">Tips</a><a href="/support.asp">Support</a></p>
</main>
</body>
</html>
