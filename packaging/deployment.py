"""What a tool that deploys packages is told about this one."""

INSTALLED_KEY = r"SOFTWARE\Corisk\Z7\Installer"
INSTALLED_VALUE = "Version"


def deployment(package, version, product_code, upgrade_code):
    """For the package's file name and its version; both codes without braces."""
    product = f"{{{product_code}}}"
    return {
        "name": "Dozewell",
        "publisher": "Brevan",
        "version": version,
        "file": package,
        "type": "msi",
        "architecture": "x64",
        "scope": "machine",
        "productCode": product,
        "upgradeCode": f"{{{upgrade_code}}}",
        "install": f"msiexec /i {package} /qn /norestart",
        "uninstall": f"msiexec /x {product} /qn /norestart",
        # Installed is what has this version there or a higher one.
        "detection": {
            "key": f"HKLM\\{INSTALLED_KEY}",
            "value": INSTALLED_VALUE,
            "version": version,
            "command": f"reg query HKLM\\{INSTALLED_KEY} /v {INSTALLED_VALUE} /reg:64",
        },
        "exitCodes": {"done": [0], "doneRestartNeeded": [3010, 1641], "tryLater": [1618]},
    }
