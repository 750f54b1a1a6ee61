<?php
/* Product list of a small shop. */
require_once 'db.php';
$items = get_items($db, array('limit' => 20, "order" => "name"));
?>
<!DOCTYPE html>
<html>
<head>
<title><?= htmlspecialchars($title) ?></title>
<style>
  table.list td { padding: 2px 4px; border-bottom: 1px solid #ccc }
  @media print { .noprint { display: none } }
</style>
<script type="text/javascript">
  // Highlight the row under the mouse.
  function mark(row, on) {
    row.style.background = on ? "#ffd" : '';
    if (row.cells.length < 2 && on) { return false; }
  }
</script>
</head>
<body onload="init({ n: <?php echo count($items); ?> })">
<table class="list">
<?php foreach ($items as $i => $item): ?>
  <tr onmouseover="mark(this, true)" onmouseout='mark(this, false)'>
    <td><?php echo $i + 1; ?></td>
    <td title="<?php echo $item['name']; ?>"><?= $item["name"] ?> &amp; more</td>
    <td><input type="checkbox" name="sel[]" value="<?= $item['id'] ?>" checked></td>
  </tr>
<?php endforeach; ?>
</table>
<!-- footer
     <p>old</p> -->
<?php
$heredoc = "multi
line string";
# shell-style comment ?>
</body>
</html>
