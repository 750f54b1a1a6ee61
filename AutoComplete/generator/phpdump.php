<?php
// Writes the built-in functions, classes and keywords of this PHP as JSON, for generate.mjs.
// Parameters and return types come from reflection; the signature is what the tip shows.

function typeText(?ReflectionType $type): string
{
    return $type === null ? '' : (string)$type;
}

// A default value as PHP source; control characters of strings as escapes.
function valueText(mixed $value): string
{
    if (is_string($value)) {
        return '"' . addcslashes($value, "\0..\37\\\"\$") . '"';
    }
    if (is_array($value)) {
        return $value === [] ? '[]' : '[...]';
    }
    return $value === null ? 'null' : var_export($value, true);
}

function paramText(ReflectionParameter $p): string
{
    $s = typeText($p->getType());
    $s .= ($s === '' ? '' : ' ') . ($p->isPassedByReference() ? '&' : '') . ($p->isVariadic() ? '...' : '')
        . '$' . $p->getName();
    if ($p->isOptional() && !$p->isVariadic()) {
        $default = $p->isDefaultValueAvailable() ? null : '?';
        if ($p->isDefaultValueAvailable()) {
            $default = $p->isDefaultValueConstant() ? $p->getDefaultValueConstantName()
                : valueText($p->getDefaultValue());
        }
        $s .= ' = ' . $default;
    }
    return $s;
}

$functions = [];
foreach (get_defined_functions()['internal'] as $name) {
    $f = new ReflectionFunction($name);
    if ($f->isDeprecated()) {
        continue;
    }
    $params = array_map('paramText', $f->getParameters());
    $functions[] = [
        'name' => $f->getName(),
        'extension' => (string)$f->getExtensionName(),
        'params' => $params,
        'return' => typeText($f->getReturnType() ?? $f->getTentativeReturnType()),
    ];
}

$classes = [];
foreach (array_merge(get_declared_classes(), get_declared_interfaces()) as $name) {
    $c = new ReflectionClass($name);
    if (!$c->isInternal()) {
        continue;
    }
    $classes[] = ['name' => $c->getName(), 'interface' => $c->isInterface(),
                  'extension' => (string)$c->getExtensionName()];
}

$keywords = ['abstract', 'and', 'array', 'as', 'break', 'callable', 'case', 'catch', 'class', 'clone',
    'const', 'continue', 'declare', 'default', 'do', 'echo', 'else', 'elseif', 'empty', 'enddeclare',
    'endfor', 'endforeach', 'endif', 'endswitch', 'endwhile', 'enum', 'eval', 'exit', 'extends', 'final',
    'finally', 'fn', 'for', 'foreach', 'function', 'global', 'goto', 'if', 'implements', 'include',
    'include_once', 'instanceof', 'insteadof', 'interface', 'isset', 'list', 'match', 'namespace', 'new',
    'or', 'print', 'private', 'protected', 'public', 'readonly', 'require', 'require_once', 'return',
    'static', 'switch', 'throw', 'trait', 'try', 'unset', 'use', 'var', 'while', 'xor', 'yield'];

echo json_encode(['version' => PHP_VERSION, 'functions' => $functions, 'classes' => $classes,
                  'keywords' => $keywords], JSON_PRETTY_PRINT | JSON_UNESCAPED_SLASHES), "\n";
