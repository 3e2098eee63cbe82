"""The chapter of recipes: example scenes, each with a large picture and what it sets."""

import html
import tomllib

from .parameters import value_text


def recipes_html(root, parameters, pictures):
    with open(root / "docs/manual/recipes.toml", "rb") as file:
        recipes = tomllib.load(file)
    return "\n".join(recipe_html(root / "examples" / f"{name}.toml", recipe, parameters, pictures)
                     for name, recipe in recipes.items())


def recipe_html(path, recipe, parameters, pictures):
    with open(path, "rb") as file:
        scene = tomllib.load(file)
    source = pictures.example(path, recipe["frame"]) if pictures else ""
    anchor = "recipe-" + path.stem.replace("_", "-")
    return (f'<article class="recipe"><img src="{source}" alt="{html.escape(recipe["alt"])}">\n'
            f'<h3 id="{anchor}">{recipe["title"]}</h3>\n<p>{recipe["text"]}</p>\n'
            f"{settings_html(scene, parameters)}\n"
            f"<p>The whole scene: <code>examples/{path.name}</code></p></article>")


def settings_html(scene, parameters):
    """What the scene sets, in the order and under the groups of the effect controls."""
    settings = dict(scene["params"])
    if "mask" in scene:
        settings["Path"] = "a mask"
    groups = {}
    for entry in parameters.declared:
        if entry["label"] in settings:
            title = (entry["groups"] or ["Mixing"])[0]
            groups.setdefault(title, []).append(
                f"<div><dt>{parameters.link(entry['label'])}</dt>"
                f"<dd>{setting_html(entry, settings[entry['label']])}</dd></div>")
    return '<div class="settings">' + "\n".join(
        f"<section><h4>{title}</h4><dl>{''.join(lines)}</dl></section>"
        for title, lines in groups.items()) + "</div>"


def setting_html(entry, value):
    if isinstance(value, list) and isinstance(value[0], dict):
        return "<br>".join(f"{setting_html(entry, key['value'])} at {key['frame']}" for key in value)
    text = html.escape(value_text(entry, value))
    if entry["type"] == "colour":
        return f'<span class="swatch" style="background: {text}"></span> {text}'
    return text
