<?php
// The contact form of the sample site: checks the fields and answers in the same page.
declare(strict_types=1);

$errors = [];
$sent = false;
if ($_SERVER['REQUEST_METHOD'] === 'POST') {
    $name = trim($_POST['name'] ?? '');
    $email = trim($_POST['email'] ?? '');
    if ($name === '') {
        $errors[] = 'Please give your name.';
    }
    if (!filter_var($email, FILTER_VALIDATE_EMAIL)) {
        $errors[] = 'Please give a valid e-mail address.';
    }
    $sent = count($errors) === 0;
}
?>
<!DOCTYPE html>
<html lang="en">
<head>
  <meta charset="utf-8">
  <title>Contact</title>
  <link rel="stylesheet" href="css/style.css">
</head>
<body>
<?php if ($sent): ?>
  <p>Thank you, <?= htmlspecialchars($name) ?>!</p>
<?php else: ?>
  <?php foreach ($errors as $error): ?>
    <p class="error"><?= htmlspecialchars($error) ?></p>
  <?php endforeach; ?>
  <form method="post">
    <label>Name <input name="name" required></label>
    <label>E-mail <input name="email" type="email" required></label>
    <button type="submit">Send</button>
  </form>
<?php endif; ?>
</body>
</html>
