<!DOCTYPE html>
<!-- SPDX-License-Identifier: GPL-3.0-or-later -->
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>No advertising here</title>
<link rel="stylesheet" href="/site.css">
</head>
<body>
<main class="oops">
<img src="/img/kiv.svg" alt="">
<div><h1>No advertising here</h1>
<p>Kivandra shows no advertising, so there is no place to book. If you make good pages for children, tell us about them instead.</p>
<p>Did this page open by itself? Then a list was pressed while a word stood in the search box. Close this window and choose a row of the list.</p>
<a class="btn" href="/getlisted/">Good pages for children</a>
</div>
</main>
</body>
</html>
