"""The texts that users see, in English and, where QGIS is in Swedish, in Swedish."""

from qgis.core import QgsApplication


def is_swedish():
    return QgsApplication.locale().lower().startswith("sv")


def tr(text):
    """An English text in the user's language. The library's own messages are English only."""
    return SWEDISH.get(text, text) if is_swedish() else text


def help_text(algorithm):
    return HELPS[algorithm][1 if is_swedish() else 0]


SWEDISH = {
    # algorithms
    "Locate points along a road": "Lägesbestäm punkter längs en väg",
    "Place stations": "Placera sektioner",
    "Road to layer (curves)": "Väg till lager (kurvor)",
    "Read LandXML/DXF road": "Läs väg från LandXML/DXF",
    # parameters
    "Road": "Väg",
    "Roads": "Vägar",
    "Road curve": "Vägkurva",
    "All files": "Alla filer",
    "The road's name, in a file of several": "Vägens namn, i en fil med flera",
    "Points": "Punkter",
    "Field of northings, where the geometry is not meant": (
        "Fält med nordkoordinater, om inte geometrin avses"
    ),
    "Field of eastings": "Fält med östkoordinater",
    "Coordinate system of the fields, for tables without geometry": (
        "Fältens koordinatsystem, för tabeller utan geometri"
    ),
    "Located points": "Lägesbestämda punkter",
    "Points with a station": "Punkter med sektion",
    "Table of stations": "Tabell med sektioner",
    "Field of stations": "Fält med sektioner",
    "Field of offsets": "Fält med sidomått",
    "Distance between stations (m), without a table": "Avstånd mellan sektioner (m), utan tabell",
    "The road's coordinate system": "Vägens koordinatsystem",
    "Placed stations": "Placerade sektioner",
    "Stations on the road": "Sektioner på vägen",
    "Layer in the file": "Lager i filen",
    "First station (m), where the file has none": "Första sektion (m), om filen inte har sektioner",
    "Largest distance after a rewrite with four decimals (m)": (
        "Största avvikelse vid omskrivning med fyra decimaler (m)"
    ),
    "Arcs for clothoids: largest distance (m); 0 refuses clothoids": (
        "Cirkelbågar för klotoider: största avvikelse (m); 0 godtar inga klotoider"
    ),
    "Metres in a foot, for files in feet; 0 refuses them": (
        "Meter per fot, för filer i fot; 0 godtar dem inte"
    ),
    "Continuous stations, where the file has station equations": (
        "Genomgående sektioner, om filen har sektionssprång"
    ),
    "Alignment file": "Väglinjefil",
    "Alignment files": "Väglinjefiler",
    "Largest distance from the file's geometry (m)": "Största avvikelse från filens geometri (m)",
    # fields
    "Station (m)": "Sektion (m)",
    "Offset (m), right is positive": "Sidomått (m), höger är positivt",
    "Level of the road's profile (m)": "Vägprofilens nivå (m)",
    "Northing (m)": "Nordkoordinat (m)",
    "Easting (m)": "Östkoordinat (m)",
    "Name": "Namn",
    "Length (m)": "Längd (m)",
    "Lowest station (m)": "Lägsta sektion (m)",
    "Highest station (m)": "Högsta sektion (m)",
    "Arcs": "Cirkelbågar",
    "Smallest radius (m)": "Minsta radie (m)",
    # statuses
    "Status": "Status",
    "on road": "på vägen",
    "corrected": "på vägen, rättad",
    "before start": "före början",
    "beyond end": "efter slutet",
    "nowhere": "utan läge",
    "unreadable": "oläslig",
    "no geometry": "utan geometri",
    # messages
    'Road "{name}": {points} points, {arcs} arcs, {length:.3f} m, stations {low:.3f} to {high:.3f}': (
        'Väg "{name}": {points} punkter, {arcs} cirkelbågar, {length:.3f} m, sektion {low:.3f} till '
        "{high:.3f}"
    ),
    "{placed} of {total} stations are on the road": "{placed} av {total} sektioner ligger på vägen",
    "No point has a station, but {count} would with northing and easting exchanged": (
        "Ingen punkt har en sektion, men {count} skulle ha det med nord- och östkoordinat omkastade"
    ),
    "Feature {id}: {field} {value} is not a number": "Objekt {id}: {field} {value} är inte ett tal",
    "Feature {id} has {count} points; run Multipart to singleparts first": (
        "Objekt {id} har {count} punkter; kör Multipart till singelpart först"
    ),
    "Choose both fields, northing and easting, or none of them": (
        "Välj båda fälten, nord- och östkoordinat, eller inget av dem"
    ),
    "The table has no geometry: choose its fields of northing and easting": (
        "Tabellen har ingen geometri: välj dess fält med nord- och östkoordinat"
    ),
    "The layer must be of points, or fields of northing and easting chosen": (
        "Lagret måste ha punkter, eller fält med nord- och östkoordinat väljas"
    ),
    "{file}: the format has no arcs; choose GeoPackage": (
        "{file}: formatet har inga cirkelbågar; välj GeoPackage"
    ),
    "The layer has no field {field}": "Lagret har inget fält {field}",
    "Choose the table's field of stations": "Välj tabellens fält med sektioner",
    "{crs} is in degrees; roads are in metres. Reproject the layer to the road's coordinate system "
    "(Reproject layer), or choose that system.": (
        "{crs} är i grader; vägar är i meter. Projicera om lagret till vägens koordinatsystem (Projicera "
        "om lager), eller välj det systemet."
    ),
    "{crs} is not in metres, as roads are. Reproject the layer to the road's coordinate system.": (
        "{crs} är inte i meter, som vägar är. Projicera om lagret till vägens koordinatsystem."
    ),
    "The Python package velmora cannot be used: {error}. Install its wheel (velmora-....whl) for QGIS, on "
    "Windows in the OSGeo4W Shell, and start QGIS again:": (
        "Pythonpaketet velmora kan inte användas: {error}. Installera dess wheel (velmora-....whl) för "
        "QGIS, i Windows i OSGeo4W Shell, och starta om QGIS:"
    ),
}

# By algorithm, in English and Swedish.
HELPS = {
    "locatepoints": (
        "Gives each point its station and offset on the road, the level of the road's profile there, and a "
        "status. All features and fields are kept; those without a place on the road have NULL and a "
        "status that says why.\n"
        "The road is an alignment file, LandXML, DXF, GeoPackage or CSV with well-known text. The points "
        "are the layer's, x easting and y northing in the road's coordinate system, or numbers in two "
        "fields, also as text with decimal comma.",
        "Ger varje punkt dess sektion och sidomått på vägen, vägprofilens nivå där och en status. Alla "
        "objekt och fält behålls; de som inte har något läge på vägen får NULL och en status som säger "
        "varför.\n"
        "Vägen är en väglinjefil, LandXML, DXF, GeoPackage eller CSV med well-known text. Punkterna är "
        "lagrets, x öst och y nord i vägens koordinatsystem, eller tal i två fält, även som text med "
        "decimalkomma.",
    ),
    "placestations": (
        "Makes a point of each row of a table with stations and perhaps offsets (m, positive to the "
        "right), with coordinates and the level of the road's profile. Rows that are not on the road are "
        "kept without geometry. Without a table, points are placed at even stations and at the road's ends.",
        "Gör en punkt av varje rad i en tabell med sektioner och eventuellt sidomått (m, höger är "
        "positivt), med koordinater och vägprofilens nivå. Rader som inte ligger på vägen behålls utan "
        "geometri. Utan tabell placeras punkter på jämna sektioner och i vägens ändar.",
    ),
    "roadtolayer": (
        "Makes a layer of one compound curve, whose arcs are the road's own and whose measures (M) are "
        "stations.",
        "Gör ett lager med en sammansatt kurva, vars cirkelbågar är vägens egna och vars M-värden är "
        "sektioner.",
    ),
    "readroad": (
        "Reads a road of another program from LandXML, DXF, GeoPackage or CSV with well-known text, as a "
        "layer with exact arcs and, if wanted, as an alignment file. What was approximated or left out is "
        "listed with its line.",
        "Läser en väg från ett annat program i LandXML, DXF, GeoPackage eller CSV med well-known text, som "
        "ett lager med exakta cirkelbågar och, om så önskas, som en väglinjefil. Det som förenklats eller "
        "utelämnats listas med radnummer.",
    ),
}
