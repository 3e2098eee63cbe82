"""The chapter of recipes: example scenes, each with a large picture and the scene to copy."""

import html
import re
import tomllib

PICTURE_WIDTH = 800


def recipes_html(root, parameters, pictures):
    with open(root / "docs/manual/recipes.toml", "rb") as file:
        recipes = tomllib.load(file)
    return "\n".join(recipe_html(root / "examples" / f"{name}.toml", recipe, parameters, pictures)
                     for name, recipe in recipes.items())


def recipe_html(path, recipe, parameters, pictures):
    source = pictures.example(path, recipe["frame"], PICTURE_WIDTH) if pictures else ""
    anchor = "recipe-" + path.stem.replace("_", "-")
    scene = path.read_text(encoding="utf-8").rstrip()
    return (f'<article class="recipe"><img src="{source}" alt="{html.escape(recipe["alt"])}">\n'
            f'<h3 id="{anchor}">{recipe["title"]}</h3>\n<p>{recipe["text"]}</p>\n'
            f"<details><summary>The scene, <code>examples/{path.name}</code></summary>\n"
            f'<pre tabindex="0" role="region" aria-label="The scene {path.name}"><code>'
            f"{scene_html(scene, parameters)}</code></pre></details></article>")


def scene_html(scene, parameters):
    """The scene's text; the labels that it sets lead to their descriptions."""
    text = html.escape(scene, quote=False).replace("[[", "[&#91;")  # a table, and no link
    return re.sub(r'^"([^"]+)"(?= = )', lambda label: f'"{parameters.link(label[1])}"', text,
                  flags=re.M)
