<?php // Installs WordPress in the current folder and writes the demo's posts: demo-blog.php URL USER PASSWORD
[, $url, $user, $password] = $argv;
$_SERVER['HTTP_HOST'] = parse_url($url, PHP_URL_HOST) . ':' . parse_url($url, PHP_URL_PORT);
$_SERVER['REQUEST_URI'] = '/';
$_SERVER['SERVER_PROTOCOL'] = 'HTTP/1.1';
define('WP_INSTALLING', true);
require getcwd() . '/wp-load.php';
require_once ABSPATH . 'wp-admin/includes/upgrade.php';
function wp_new_blog_notification() {} // no mail
wp_install('The Harbour Notes', $user, 'writer@example.com', true, '', wp_slash($password));
foreach (get_posts(['post_type' => ['post', 'page'], 'post_status' => 'any', 'numberposts' => -1]) as $old) {
    wp_delete_post($old->ID, true);
}
$author = get_user_by('login', $user)->ID;
$travel = wp_insert_term('Travel & Weather', 'category')['term_id'];
$craft = wp_insert_term('Craft', 'category')['term_id'];

function demo_post($author, $title, $content, $extra = [])
{
    $id = wp_insert_post(wp_slash($extra + ['post_title' => $title, 'post_content' => $content, 'post_author' => $author,
        'post_status' => 'publish']), true);
    if (is_wp_error($id)) {
        fwrite(STDERR, $id->get_error_message());
        exit(1);
    }
}

/** Draws a harbour at dawn and gives its address. */
function demo_picture($url)
{
    [$w, $h] = [900, 600];
    $picture = imagecreatetruecolor($w, $h);
    imageantialias($picture, true);
    for ($y = 0; $y < $h; $y++) {
        $t = $y / $h;
        $sky = $y < 380 ? [255 - 90 * (1 - $t), 170 + 40 * $t, 130 + 90 * (1 - $t)] : [60 - 20 * $t, 110 - 40 * $t, 140 - 30 * $t];
        imageline($picture, 0, $y, $w, $y, imagecolorallocate($picture, ...array_map('intval', $sky)));
    }
    imagefilledellipse($picture, 640, 360, 130, 130, imagecolorallocate($picture, 255, 236, 200));
    imagefilledrectangle($picture, 0, 380, $w, 384, imagecolorallocate($picture, 90, 120, 140));
    $hull = imagecolorallocate($picture, 40, 48, 62);
    imagefilledpolygon($picture, [180, 430, 460, 430, 420, 490, 220, 490], $hull);
    imagefilledpolygon($picture, [310, 190, 310, 420, 200, 420], imagecolorallocate($picture, 245, 240, 228));
    imagefilledrectangle($picture, 312, 170, 318, 432, $hull);
    @mkdir(ABSPATH . 'wp-content/uploads', 0755, true);
    imagejpeg($picture, ABSPATH . 'wp-content/uploads/market.jpg', 88);
    return "$url/wp-content/uploads/market.jpg";
}

$market = demo_picture($url);
demo_post($author, 'A morning at the fish market', <<<HTML
The boats come in before five. By the time the first buses cross the bridge, the best of the catch has gone.

<img class="alignright size-medium" src="$market" alt="The market hall at dawn" width="300" height="200" />I went to see <strong>how the auction works</strong>, and to ask what "fresh" means to people who sell fish for a living.

<!--more-->

<h2>What they told me</h2>

<blockquote>If it smells of fish, it's old.</blockquote>

<ul>
	<li>Look at the eyes first.</li>
	<li>Then the gills &amp; the skin.</li>
	<li>Price comes last.</li>
</ul>

I bought two mackerel &mdash; and a coffee.
HTML, ['post_date' => '2026-03-02 08:15:00', 'post_category' => [$travel], 'tags_input' => ['market', 'morning']]);

demo_post($author, 'Mending a wooden hull', <<<'HTML'
<!-- wp:paragraph -->
<p>Every spring the same question: <em>caulk or replace?</em> This year I wrote down what I did, so that next year's me can complain about it.</p>
<!-- /wp:paragraph -->

<!-- wp:heading -->
<h2>Tools</h2>
<!-- /wp:heading -->

<!-- wp:list -->
<ul><!-- wp:list-item -->
<li>A mallet and two irons</li>
<!-- /wp:list-item -->

<!-- wp:list-item -->
<li>Cotton &amp; oakum</li>
<!-- /wp:list-item --></ul>
<!-- /wp:list -->

<!-- wp:quote -->
<blockquote class="wp-block-quote"><!-- wp:paragraph -->
<p>Dry wood lies.</p>
<!-- /wp:paragraph --></blockquote>
<!-- /wp:quote -->

<!-- wp:code -->
<pre class="wp-block-code"><code>if (seam &lt; 3) { caulk(); }</code></pre>
<!-- /wp:code -->

<!-- wp:paragraph {"align":"center"} -->
<p class="has-text-align-center">That is all there is to it.</p>
<!-- /wp:paragraph -->
HTML, ['post_date' => '2026-03-09 19:40:00', 'post_category' => [$craft], 'tags_input' => ['boats']]);

demo_post($author, 'Notes on fog', <<<'HTML'
Fog is a cloud that has come down to see what we are doing.

It arrived at nine & left at noon 🌫️. In between, the lighthouse talked to itself.
HTML, ['post_date' => '2026-03-15 12:00:00', 'post_category' => [$travel], 'tags_input' => ['fog', 'R&D']]);

demo_post($author, 'About this blog', "Short notes from a small harbour.\n\nWrite to me, I read everything.", ['post_type' => 'page']);
